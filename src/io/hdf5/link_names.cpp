// Refuses names that no group can have, and makes nothing up in their place.
#include "io/hdf5/link_names.h"

#include "io/hdf5/error_text.h"
#include "model/factories/factory_size.h"

namespace NBrenmark {

static std::string quoted(const std::string& name) { return "\"" + name + "\""; }

bool isLinkName(const std::string& name)
{
    return !name.empty() && name != "." && name.find('/') == std::string::npos && name.find('\0') == std::string::npos;
}

bool isLawWithoutPlace(const std::string& typeName, const ISizeDistribution* law)
{
    return !isLinkName(typeName) && law != nullptr && law->kindWord() == QLatin1String(CFixedSizeDistribution::word) &&
           law->equals(CFixedSizeDistribution());
}

std::string CLinkNames::next(const QString& name)
{
    std::string bytes = name.toStdString();
    const auto refuse = [&](const std::string& why) {
        throw unstorable_error("A " + what + " is named " + quoted(bytes.substr(0, bytes.find('\0'))) +
                               (where.empty() ? "" : " in " + where) + ", and " + why +
                               " Rename it in the program that made the deck.");
    };
    if (!isLinkName(bytes))
        refuse("an HDF5 group can't have that name: it may not be empty, a dot, or hold a slash or a zero.");
    if (!taken.insert(bytes).second)
        refuse("so is another one: HDF5 groups that lie together need names of their own.");
    return bytes;
}

} // namespace NBrenmark
