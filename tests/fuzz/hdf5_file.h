#pragma once
// Bytes in place of a numbered file of an HDF5 deck.

#include "core/deck/file_families.h"
#include "fuzz/legacy_stream.h"
#include "fuzz/memory_file.h"
#include "io/hdf5/checked_file_driver.h"
#include "io/hdf5/error_text.h"
#include "io/hdf5/file_structure.h"

#include <H5Cpp.h>

#include <exception>

namespace NBrenmark {

/// Reads one half of a frame. Whatever the bytes are, the result is an exception or a half that was read.
template <class TObject>
void readHdf5(const std::uint8_t* bytes, std::size_t size, TObject& object)
{
    static const CMemoryFile file;
    file.hold(bytes, size);
    catchHdf5Errors();
    setMemoryCeiling(fuzzedCeiling);
    beginMemoryCount(eMemoryOfTimestep);
    try {
        checkStructure(file.path());
        H5::FileAccPropList access;
        useCheckedFiles(access);
        H5::H5File opened(file.path(), H5F_ACC_RDONLY, H5::FileCreatPropList::DEFAULT, access);
        SSaveOptions options;
        NHdf5Family::readObject(opened, options, object);
    }
    catch (const std::exception&) {
    }
    catch (const H5::Exception&) {
    }
}

} // namespace NBrenmark
