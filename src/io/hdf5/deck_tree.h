#pragma once
// The few groups and attributes of a file that the manager itself looks at.

#include <H5Cpp.h>

#include <QString>

namespace NBrenmark {

constexpr const char* creatorGroup = "/CreatorData/";
constexpr const char* timestepGroup = "/TimestepData/";
constexpr const char* creatorIndexName = "creatordata index";

/// The one timestep of a numbered file, opened.
/// \throws hdf5_error  if the file holds none or several
H5::Group openOnlyTimestep(const H5::H5File& file);

/// Its name. \throws hdf5_error  as above
std::string openOnlyTimestepName(const H5::H5File& file);

/// Number of the creator model that a numbered file's timestep uses.
quint32 creatorIndexOf(const H5::H5File& file);

/// Reports a file whose model has the number of another one: its name isn't its own, and what the file of that name held
/// is lost.
void checkOwnNumber(const H5::H5File& file, quint32 number);

} // namespace NBrenmark
