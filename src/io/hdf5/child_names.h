#pragma once
// The names in a group, fetched in one walk: to ask for each by its number walks the group's tree anew every time.

#include <H5Cpp.h>

#include <string>
#include <vector>

namespace NBrenmark {

/// Of all links of a group or of a file's root, in the order of their bytes.
/// \throws H5::GroupIException  if the group can't be walked
std::vector<std::string> childNames(const H5::H5Location& group);

} // namespace NBrenmark
