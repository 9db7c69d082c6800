#pragma once
// Names that become names of groups: a slash would make two groups of one, and of two equal names the second can't be
// made.

#include <QString>

#include <set>
#include <string>

namespace NBrenmark {

class ISizeDistribution;

/// The names of the groups in one group.
class CLinkNames
{
public:
    /// \param what   is named, for the text: "particle factory"
    /// \param where  it is: "geometry group "Hopper""; may be empty
    CLinkNames(std::string what, std::string where) : what(std::move(what)), where(std::move(where)) {}

    /// The next name, as bytes.
    /// \throws unstorable_error  if no group can have it, or one has it already
    std::string next(const QString& name);

private:
    std::string what;
    std::string where;
    std::set<std::string> taken;
};

/// Whether a group can have the name.
bool isLinkName(const std::string& name);

/// Whether the law of a particle type may be left out for its name: the one that every type has for which nothing was
/// said. The type itself is stored under its number, whatever its name is.
bool isLawWithoutPlace(const std::string& typeName, const ISizeDistribution* law);

} // namespace NBrenmark
