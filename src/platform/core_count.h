#pragma once
// How many cores this process may use.

#include <string>

namespace NBrenmark {

/// Those that it may run on, and no more than the time that a container gives it makes full use of. At least 1.
unsigned availableCores();

/// Cores that the limits of a control group and of those above it give time for; 0 where there is none.
/// \param root     where the control groups are
/// \param members  of the process: the text of /proc/self/cgroup
unsigned coresOfControlGroup(const std::string& root, const std::string& members);

} // namespace NBrenmark
