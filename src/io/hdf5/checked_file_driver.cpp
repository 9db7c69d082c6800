// The calls that HDF5 makes of a file, as plain reads and writes. After the first write that failed the later ones
// are swallowed, so that HDF5 can close what it has; whoever wrote asks for the failure.
#include "io/hdf5/checked_file_driver.h"

#include <H5Cpp.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <map>
#include <memory>
#include <mutex>
#include <new>
#include <string>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace NBrenmark {

namespace {

// ---------------------------------------------------------------- what failed

/// The first failure of each file, by the name that it was opened with.
class CFailures
{
public:
    void forget(const std::string& name)
    {
        const std::lock_guard<std::mutex> guard(lock);
        texts.erase(name);
        unreported = false;
    }

    void remember(const std::string& name, const std::string& text)
    {
        const std::lock_guard<std::mutex> guard(lock);
        texts.emplace(name, text);
    }

    /// There was no memory for a text.
    void rememberUnreported() { unreported = true; }

    void throwIfAny(const std::string& name)
    {
        if (unreported)
            throw std::bad_alloc();
        const std::lock_guard<std::mutex> guard(lock);
        const auto found = texts.find(name);
        if (found != texts.end())
            throw write_error(found->second);
    }

private:
    std::mutex lock;
    std::map<std::string, std::string> texts;
    std::atomic<bool> unreported{false};
};

CFailures& failures()
{
    static CFailures* const all = new CFailures; // HDF5 may still close files when statics are gone
    return *all;
}

std::string causeText(int error)
{
    char buffer[128] = {};
    return strerror_r(error, buffer, sizeof buffer);
}

// ---------------------------------------------------------------- the driver's file

/// Starts with HDF5's own part, which the library fills in.
struct SCheckedFile
{
    H5FD_t base;
    int descriptor;
    haddr_t allocated; // what HDF5 counts as used
    haddr_t size;      // of the file, as far as HDF5 knows
    dev_t device;
    ino_t inode;
    bool failed;
    std::string* name;
};

SCheckedFile& self(H5FD_t* file) { return *reinterpret_cast<SCheckedFile*>(file); }
const SCheckedFile& self(const H5FD_t* file) { return *reinterpret_cast<const SCheckedFile*>(file); }

// HDF5 calls what follows, and no exception may pass through it: the only ones here are of too little memory.

template <class TBody>
auto withoutExceptions(decltype(std::declval<TBody>()()) failed, TBody&& body) noexcept -> decltype(body())
{
    try {
        return body();
    }
    catch (const std::exception&) {
        H5Epush2(H5E_DEFAULT, __FILE__, "checked file", __LINE__, H5E_ERR_CLS, H5E_RESOURCE, H5E_NOSPACE,
                 "too little memory");
        return failed;
    }
}

void pushError(hid_t major, hid_t minor, const char* what, const char* name, int error)
{
    char cause[128] = {};
    H5Epush2(H5E_DEFAULT, __FILE__, "checked file", __LINE__, H5E_ERR_CLS, major, minor, "%s %s: %s", what, name,
             strerror_r(error, cause, sizeof cause));
}

void fail(SCheckedFile& file, const char* action, int error) noexcept
{
    file.failed = true;
    try {
        failures().remember(*file.name,
                            "Could not " + std::string(action) + " " + *file.name + ": " + causeText(error));
    }
    catch (const std::exception&) {
        failures().rememberUnreported();
    }
}

H5FD_t* openFile(const char* name, unsigned flags, hid_t, haddr_t)
{
    int mode = (flags & H5F_ACC_RDWR) != 0 ? O_RDWR : O_RDONLY;
    mode |= (flags & H5F_ACC_TRUNC) != 0 ? O_TRUNC : 0;
    mode |= (flags & H5F_ACC_CREAT) != 0 ? O_CREAT | O_NOFOLLOW : 0; // a new file is where its name is
    mode |= (flags & H5F_ACC_EXCL) != 0 ? O_EXCL : 0;
    const int descriptor = ::open(name, mode | O_CLOEXEC, 0666);
    if (descriptor < 0) {
        pushError(H5E_FILE, H5E_CANTOPENFILE, "can't open", name, errno);
        return nullptr;
    }
    struct stat status = {};
    if (::fstat(descriptor, &status) != 0) {
        pushError(H5E_FILE, H5E_BADFILE, "can't look at", name, errno);
        ::close(descriptor);
        return nullptr;
    }
    H5FD_t* const opened = withoutExceptions(static_cast<H5FD_t*>(nullptr), [&] {
        failures().forget(name); // of an earlier file of that name
        auto file = std::make_unique<SCheckedFile>();
        file->descriptor = descriptor;
        file->size = static_cast<haddr_t>(status.st_size);
        file->device = status.st_dev;
        file->inode = status.st_ino;
        file->name = new std::string(name);
        return &file.release()->base;
    });
    if (opened == nullptr)
        ::close(descriptor);
    return opened;
}

herr_t closeFile(H5FD_t* base)
{
    SCheckedFile& file = self(base);
    if (::close(file.descriptor) != 0 && !file.failed)
        fail(file, "finish", errno);
    delete file.name;
    delete &file;
    return 0;
}

int compareFiles(const H5FD_t* a, const H5FD_t* b)
{
    const auto key = [](const SCheckedFile& file) { return std::make_pair(file.device, file.inode); };
    return key(self(a)) < key(self(b)) ? -1 : key(self(b)) < key(self(a)) ? 1 : 0;
}

herr_t queryFeatures(const H5FD_t*, unsigned long* flags)
{
    // Those of the library's own POSIX driver, so that a file comes out the same.
    *flags = H5FD_FEAT_AGGREGATE_METADATA | H5FD_FEAT_ACCUMULATE_METADATA | H5FD_FEAT_DATA_SIEVE |
             H5FD_FEAT_AGGREGATE_SMALLDATA | H5FD_FEAT_POSIX_COMPAT_HANDLE | H5FD_FEAT_DEFAULT_VFD_COMPATIBLE;
    return 0;
}

haddr_t allocatedEnd(const H5FD_t* file, H5FD_mem_t) { return self(file).allocated; }

herr_t setAllocatedEnd(H5FD_t* file, H5FD_mem_t, haddr_t end)
{
    self(file).allocated = end;
    return 0;
}

haddr_t fileEnd(const H5FD_t* file, H5FD_mem_t) { return self(file).size; }

herr_t descriptorOf(H5FD_t* file, hid_t, void** handle)
{
    *handle = &self(file).descriptor;
    return 0;
}

herr_t readBytes(H5FD_t* base, H5FD_mem_t, hid_t, haddr_t address, size_t size, void* buffer)
{
    const SCheckedFile& file = self(base);
    char* target = static_cast<char*>(buffer);
    while (size > 0) {
        const ssize_t got = ::pread(file.descriptor, target, size, static_cast<off_t>(address));
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0) {
            pushError(H5E_IO, H5E_READERROR, "can't read", file.name->c_str(), errno);
            return -1;
        }
        if (got == 0) { // after the end: allocated, never written
            std::memset(target, 0, size);
            return 0;
        }
        target += got;
        address += static_cast<haddr_t>(got);
        size -= static_cast<size_t>(got);
    }
    return 0;
}

herr_t writeBytes(H5FD_t* base, H5FD_mem_t, hid_t, haddr_t address, size_t size, const void* buffer)
{
    SCheckedFile& file = self(base);
    file.size = std::max(file.size, address + size); // even when nothing is written: HDF5 has to believe in its end
    const char* source = static_cast<const char*>(buffer);
    while (size > 0 && !file.failed) {
        const ssize_t put = ::pwrite(file.descriptor, source, size, static_cast<off_t>(address));
        if (put < 0 && errno == EINTR)
            continue;
        if (put <= 0) {
            char action[96] = {};
            std::snprintf(action, sizeof action, "write %zu bytes at byte %llu of", size,
                          static_cast<unsigned long long>(address));
            fail(file, action, put < 0 ? errno : EIO); // a write of nothing has no cause of its own
            break;
        }
        source += put;
        address += static_cast<haddr_t>(put);
        size -= static_cast<size_t>(put);
    }
    return 0;
}

herr_t setFileSize(H5FD_t* base, hid_t, hbool_t)
{
    SCheckedFile& file = self(base);
    if (file.allocated == file.size)
        return 0;
    file.size = file.allocated;
    int result = 0;
    do {
        result = file.failed ? 0 : ::ftruncate(file.descriptor, static_cast<off_t>(file.size));
    } while (result != 0 && errno == EINTR);
    if (result != 0)
        fail(file, "set the size of", errno);
    return 0;
}

/// A file system without locks is no reason to refuse a deck.
bool isLockingUnknown(int error)
{
    return error == ENOSYS || error == EOPNOTSUPP || error == ENOLCK || error == EINVAL;
}

herr_t lockFile(H5FD_t* base, hbool_t forWriting)
{
    const SCheckedFile& file = self(base);
    if (::flock(file.descriptor, (forWriting ? LOCK_EX : LOCK_SH) | LOCK_NB) == 0 || isLockingUnknown(errno))
        return 0;
    if (errno == EWOULDBLOCK)
        H5Epush2(H5E_DEFAULT, __FILE__, "checked file", __LINE__, H5E_ERR_CLS, H5E_FILE, H5E_CANTOPENFILE,
                 "%s is in use by another process", file.name->c_str());
    else
        pushError(H5E_FILE, H5E_CANTOPENFILE, "can't lock", file.name->c_str(), errno);
    return -1;
}

herr_t unlockFile(H5FD_t* base)
{
    ::flock(self(base).descriptor, LOCK_UN); // closing it lets go of the lock as well
    return 0;
}

const H5FD_class_t& driverClass()
{
    static const H5FD_class_t driver = [] {
        H5FD_class_t d = {};
        d.name = "brenmark checked file";
        d.maxaddr = (haddr_t(1) << (8 * sizeof(off_t) - 1)) - 1; // what an off_t counts
        d.fc_degree = H5F_CLOSE_WEAK;                            // as the library's own drivers have it
        d.open = openFile;
        d.close = closeFile;
        d.cmp = compareFiles;
        d.query = queryFeatures;
        d.get_eoa = allocatedEnd;
        d.set_eoa = setAllocatedEnd;
        d.get_eof = fileEnd;
        d.get_handle = descriptorOf;
        d.read = readBytes;
        d.write = writeBytes;
        d.truncate = setFileSize;
        d.lock = lockFile;
        d.unlock = unlockFile;
        const H5FD_mem_t types[] = H5FD_FLMAP_DICHOTOMY;
        std::copy(std::begin(types), std::end(types), d.fl_map);
        return d;
    }();
    return driver;
}

} // namespace

void useCheckedFiles(H5::FileAccPropList& access)
{
    static hid_t driver = H5I_INVALID_HID;
    if (driver < 0)
        driver = H5FDregister(&driverClass());
    if (driver < 0 || H5Pset_driver(access.getId(), driver, nullptr) < 0)
        throw std::bad_alloc(); // nothing else is asked for
}

void throwIfFailed(const H5::H5File& file) { failures().throwIfAny(file.getFileName()); }

void flushChecked(H5::H5File& file)
{
    file.flush(H5F_SCOPE_LOCAL);
    throwIfFailed(file);
}

void closeChecked(std::unique_ptr<H5::H5File>& file)
{
    if (!file)
        return;
    const std::unique_ptr<H5::H5File> closing = std::move(file);
    const std::string name = closing->getFileName();
    closing->close();
    failures().throwIfAny(name);
}

} // namespace NBrenmark
