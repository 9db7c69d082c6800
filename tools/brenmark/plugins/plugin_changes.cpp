#include "brenmark/plugins/plugin_changes.h"

#include <algorithm>
#include <cstdlib>
#include <regex>

namespace NBrenmark {

/// The number at a path; -1 without one.
static long numberAt(const TextLines& lines, const std::string& path)
{
    const auto line = std::find_if(lines.begin(), lines.end(), [&](const TextLine& one) { return one.first == path; });
    return line == lines.end() ? -1 : std::strtol(line->second.c_str(), nullptr, 10);
}

/// A property that only the new deck defines, and of which nothing has values.
static bool isDefinedForPlugin(const SDifference& difference, const TextLines& converted)
{
    static const std::regex definition("(deck/settings/(particle|contact|geometry|simulation)Properties)/[^/]+");
    std::smatch parts;
    if (difference.kind != eExtra || !std::regex_match(difference.place, parts, definition))
        return false;
    return numberAt(converted, difference.place + "/index") >
           numberAt(converted, parts[1].str() + "/lastFinalisedPropertyIndex");
}

/// A model that was built in or a plug-in's, and was found to be a plug-in's.
static bool isOriginOfPlugin(const SDifference& difference)
{
    static const std::regex origin(
        "creator(@[0-9]+)?/physicsModels/(sphereSphereModels|sphereGeometryModels|externalForces)/[^/]+/source");
    return difference.kind == eOtherValue && std::regex_match(difference.place, origin) &&
           std::strtoul(difference.source.c_str(), nullptr, 10) > 1 && difference.converted == "1";
}

std::vector<SModelChange> takePluginChanges(std::vector<SDifference>& differences, const TextLines& converted)
{
    std::vector<SModelChange> meant;
    const auto isMeant = [&](const SDifference& difference) {
        const bool isProperty = isDefinedForPlugin(difference, converted);
        if (!isProperty && !isOriginOfPlugin(difference))
            return false;
        meant.push_back({isProperty ? "custom properties that plug-ins need" : "plug-ins found by their names",
                         difference.place, difference.source, difference.converted});
        return true;
    };
    differences.erase(std::remove_if(differences.begin(), differences.end(), isMeant), differences.end());
    return meant;
}

} // namespace NBrenmark
