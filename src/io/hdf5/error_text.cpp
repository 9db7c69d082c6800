// Keeps the innermost error of HDF5 as a text. HDF5 calls in with its lock held, so that nothing may be thrown
// through it.
#include "io/hdf5/error_text.h"

#include <H5Cpp.h>

#include <atomic>
#include <exception>
#include <mutex>

namespace NBrenmark {

static std::mutex textLock;

static QString& text()
{
    static QString* const last = new QString; // outlives HDF5, which may still fail when the process ends
    return *last;
}

static std::atomic<bool> outOfMemory{false};

static herr_t takeInnermost(unsigned record, const H5E_error2_t* error, void* target) noexcept
{
    if (error->maj_num == H5E_RESOURCE && error->min_num == H5E_NOSPACE)
        outOfMemory = true;
    try {
        if (record == 0)
            *static_cast<QString*>(target) += QStringLiteral(" - %1").arg(
                QString::fromLocal8Bit(error->desc && *error->desc ? error->desc : error->func_name));
    }
    catch (const std::exception&) {
        outOfMemory = true;
    }
    return 0;
}

/// HDF5 calls this and holds its lock meanwhile: an exception that passed through would leave it locked for ever.
static herr_t keepErrorText(hid_t stack, void* target) noexcept
{
    try {
        const std::lock_guard<std::mutex> guard(textLock);
        outOfMemory = false;
        static_cast<QString*>(target)->clear();
        return H5Ewalk2(stack, H5E_WALK_UPWARD, takeInnermost, target);
    }
    catch (const std::exception&) {
        outOfMemory = true; // there is no memory for a text
        return -1;
    }
}

void catchHdf5Errors()
{
    H5E_auto2_t keep = keepErrorText;
    H5::Exception::setAutoPrint(keep, &text());
}

QString lastHdf5Error()
{
    const std::lock_guard<std::mutex> guard(textLock);
    return text();
}

bool lastHdf5ErrorWasMemory() { return outOfMemory; }

void clearLastHdf5Error()
{
    outOfMemory = false;
    const std::lock_guard<std::mutex> guard(textLock);
    text().clear();
}

void throwAt(const H5::H5Location& location, const char* kind, const std::string& name, const std::string& what)
{
    std::string path(256, '\0');
    const ssize_t length = H5Iget_name(location.getId(), &path[0], path.size());
    path.resize(length > 0 ? std::min(path.size() - 1, static_cast<std::size_t>(length)) : 0);
    throw hdf5_error(path + ", " + kind + " \"" + name + "\": " + what);
}

void throwAt(const H5::H5Location& location, const char* kind, const std::string& name, const H5::Exception& error)
{
    throwAt(location, kind, name, error.getDetailMsg());
}

} // namespace NBrenmark
