#pragma once
// What is asked of a stored value before HDF5 reads it. The library trusts what a file says of itself:
// it takes any memory that is announced, converts from types that can't be, and goes where a link leads.

#include <H5public.h>

#include <string>

namespace H5 {
class Attribute;
class DataSet;
class DSetMemXferPropList;
class H5Location;
} // namespace H5

namespace NBrenmark {

/// Whatever a path names must be in this file itself: the bytes of another one, which a link or a dataset may name, are
/// no part of the deck and perhaps nothing that its reader should see.
/// \throws hdf5_error  if a part of the path is a link of another kind than every deck has
void requireOwn(const H5::H5Location& location, const char* kind, const std::string& path);

/// For a transfer that fails where a stored number isn't one of the integers that it is to become: 1.5, or one that is
/// too great. HDF5 takes the nearest one otherwise.
const H5::DSetMemXferPropList& wholeNumbersOnly();

/// Keeps HDF5 from loading filter plug-ins, which it does for any file that names one, while this lives: a deck is
/// data and brings no code.
class CWithoutFilterPlugins
{
public:
    CWithoutFilterPlugins();
    ~CWithoutFilterPlugins();
    CWithoutFilterPlugins(const CWithoutFilterPlugins&) = delete;
    CWithoutFilterPlugins& operator=(const CWithoutFilterPlugins&) = delete;

private:
    unsigned before = 0; // a host may want its plug-ins again
};

/// Whether HDF5 has the memory for its own work: it doesn't survive where it has too little.
/// \throws std::bad_alloc  otherwise
void requireRoomForHdf5();

/// The same before an array of so many bytes is read or written; of small ones one in several asks.
/// \throws std::bad_alloc  there is too little
void requireRoomForArray(hsize_t bytes);

/// Begins the count of what the datasets of one read claim to have stored: more than the file has is damage.
void beginStorageCount();

/// \throws hdf5_error  if the type isn't one that a writer can have made
/// \param location, name  of the attribute, for the text
void checkSound(const H5::Attribute& attribute, const H5::H5Location& location, const std::string& name);

/// \throws hdf5_error  the same, or if its bytes are in another file, or need a filter that no deck has, or
///         if the dataset announces more than its bytes in the file can hold, so
///         that four damaged bytes never cost sixteen gigabytes
void checkSound(const H5::DataSet& dataset, const H5::H5Location& location, const std::string& name);

} // namespace NBrenmark
