#pragma once
// The text of the last error inside HDF5, and what the forms throw when a stored thing isn't what
// they need. HDF5 itself never prints here.

#include "core/cause.h"

#include <QString>
#include <stdexcept>
#include <string>

namespace H5 {
class Exception;
class H5Location;
} // namespace H5

namespace NBrenmark {

/// Something stored is missing, of another kind or damaged.
class hdf5_error : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// A name or text that the format has no place for: it isn't the disk that is at fault.
class unstorable_error : public caused_error
{
public:
    explicit unstorable_error(const std::string& what) : caused_error(eCauseNames, what) {}
};

/// Makes HDF5 leave its errors in lastHdf5Error(), for the calling thread: the library keeps an
/// error stack, and its way of reporting it, for each thread.
void catchHdf5Errors();

/// " - " and what the innermost HDF5 call said when it last failed, in any thread; empty if none did.
QString lastHdf5Error();
/// Whether the last call failed for too little memory.
bool lastHdf5ErrorWasMemory();
void clearLastHdf5Error();

/// Throws an hdf5_error that says where: "/CreatorData/0, attribute "title": H5Aopen failed".
/// \param kind  "attribute", "dataset" or "group"
[[noreturn]] void throwAt(const H5::H5Location& location, const char* kind, const std::string& name,
                          const std::string& what);
[[noreturn]] void throwAt(const H5::H5Location& location, const char* kind, const std::string& name,
                          const H5::Exception& error);

} // namespace NBrenmark
