#pragma once
// What is asked of a stored value before HDF5 reads it. The library trusts what a file says of itself:
// it takes any memory that is announced, and converts from types that can't be.

#include <string>

namespace H5 {
class Attribute;
class DataSet;
class H5Location;
} // namespace H5

namespace NBrenmark {

/// \throws hdf5_error  if the type isn't one that a writer can have made
/// \param location, name  of the attribute, for the text
void checkSound(const H5::Attribute& attribute, const H5::H5Location& location, const std::string& name);

/// \throws hdf5_error  the same, or if the dataset announces more than its bytes in the file can hold, so
///         that four damaged bytes never cost sixteen gigabytes
void checkSound(const H5::DataSet& dataset, const H5::H5Location& location, const std::string& name);

} // namespace NBrenmark
