#include "brenmark/disk.h"

#include "brenmark/failure.h"

#include <QFile>

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace NBrenmark {

namespace {

namespace fs = std::filesystem;

[[noreturn]] void fail(const std::string& path, const std::string& action, const std::string& cause)
{
    throw CFailure(eExitTarget, path + ": can't be " + action + ": " + cause, adviceForWriting(cause));
}

[[noreturn]] void failByErrno(const std::string& path, const std::string& action)
{
    fail(path, action, std::generic_category().message(errno));
}

class CRealDisk : public IDisk
{
public:
    bool exists(const std::string& path) const override
    {
        std::error_code none;
        return fs::symlink_status(path, none).type() != fs::file_type::not_found;
    }

    bool isLink(const std::string& path) const override
    {
        std::error_code none;
        return fs::is_symlink(path, none);
    }

    std::vector<std::string> names(const std::string& folder) const override
    {
        std::vector<std::string> found;
        std::error_code failure;
        for (fs::directory_iterator entry(folder, failure), end; !failure && entry != end; entry.increment(failure))
            found.push_back(entry->path().filename().string());
        std::sort(found.begin(), found.end());
        return found;
    }

    void makeFolder(const std::string& path) override
    {
        if (::mkdir(path.c_str(), 0777) != 0 && errno != EEXIST)
            failByErrno(path, "made");
    }

    void writeFile(const std::string& path, const std::string& content) override
    {
        const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOFOLLOW, 0666);
        if (file < 0)
            failByErrno(path, "written");
        for (size_t done = 0; done < content.size();) {
            const ssize_t put = ::write(file, content.data() + done, content.size() - done);
            if (put < 0 && errno == EINTR)
                continue;
            if (put <= 0) {
                const int error = errno;
                ::close(file);
                errno = error;
                failByErrno(path, "written");
            }
            done += static_cast<size_t>(put);
        }
        if (::close(file) != 0)
            failByErrno(path, "written");
    }

    void rename(const std::string& from, const std::string& to) override
    {
        if (::rename(from.c_str(), to.c_str()) != 0)
            failByErrno(from, "renamed to " + to);
    }

    void remove(const std::string& path) override
    {
        std::error_code failure;
        fs::remove(path, failure);
        if (failure)
            fail(path, "removed", failure.message());
    }

    void sync(const std::string& path) override
    {
        const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
        if (file < 0)
            failByErrno(path, "opened to be synced");
        const bool isSynced = ::fsync(file) == 0 || errno == EINVAL || errno == EROFS; // where there is nothing to sync
        const int error = errno;
        ::close(file);
        errno = error;
        if (!isSynced)
            failByErrno(path, "synced");
    }
};

} // namespace

IDisk& realDisk()
{
    static CRealDisk disk;
    return disk;
}

std::string nativePath(const QString& path) { return QFile::encodeName(path).toStdString(); }

} // namespace NBrenmark
