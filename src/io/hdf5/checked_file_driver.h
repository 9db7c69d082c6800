#pragma once
// The file driver under every HDF5 file of this library: plain reads and writes, with a memory for
// what failed.
//
// HDF5 gives up in the middle of its own structures when a write fails. It then forgets about data
// that never arrived, or crashes or spins in its exit handlers over objects that it couldn't close.
// So this driver never passes it on: the first failure of a file is remembered with its cause, later
// writes of that file pass unheard, and the objects close and the process ends in good order. What
// was lost shows in throwIfFailed and closeChecked, one of which every write ends with.

#include <memory>
#include <stdexcept>

namespace H5 {
class FileAccPropList;
class H5File;
} // namespace H5

namespace NBrenmark {

/// A write didn't arrive. The text names the file and the cause.
class write_error : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// Files opened with this list are files of this driver.
void useCheckedFiles(H5::FileAccPropList& access);

/// \throws write_error  if anything was to be written to the file since it was opened and wasn't
void throwIfFailed(const H5::H5File& file);

/// Flushes the file, then the same.
void flushChecked(H5::H5File& file);

/// Closes the file by the call that reports and lets the object go in any case.
/// \throws write_error  if anything of it, up to its last byte, didn't arrive
/// \throws H5::Exception
void closeChecked(std::unique_ptr<H5::H5File>& file);

} // namespace NBrenmark
