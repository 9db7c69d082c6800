// Paths are taken apart by their slashes: names in them, which a deck may make very long, have none.
#include "brenmark/plugins/plugin_changes.h"

#include <algorithm>
#include <cstdlib>

namespace NBrenmark {

/// The number at a path; -1 without one.
static long numberAt(const TextLines& lines, const std::string& path)
{
    const auto line = std::find_if(lines.begin(), lines.end(), [&](const TextLine& one) { return one.first == path; });
    return line == lines.end() ? -1 : std::strtol(line->second.c_str(), nullptr, 10);
}

static bool endsWith(const std::string& text, const std::string& end)
{
    return text.size() >= end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

/// Whether a path is that of a model's origin.
static bool isOrigin(const std::string& path)
{
    return path.find("/physicsModels/") != std::string::npos && endsWith(path, "/source");
}

/// A property that only the new deck defines, and of which nothing has values.
static bool isDefinedForPlugin(const SDifference& difference, const TextLines& converted)
{
    const std::size_t slash = difference.place.rfind('/');
    const std::string owner = difference.place.substr(0, std::min(slash, difference.place.size()));
    const bool isOwner = owner == "deck/settings/particleProperties" || owner == "deck/settings/contactProperties" ||
                         owner == "deck/settings/geometryProperties" || owner == "deck/settings/simulationProperties";
    return difference.kind == eExtra && isOwner &&
           numberAt(converted, difference.place + "/index") >
               numberAt(converted, owner + "/lastFinalisedPropertyIndex");
}

/// A model that was built in or a plug-in's, and was found to be a plug-in's.
static bool isOriginOfPlugin(const SDifference& difference)
{
    return difference.kind == eOtherValue && isOrigin(difference.place) &&
           std::strtoul(difference.source.c_str(), nullptr, 10) > 1 && difference.converted == "1";
}

bool namesPlugins(const TextLines& model)
{
    return std::any_of(model.begin(), model.end(), [](const TextLine& line) {
        return (isOrigin(line.first) && line.second != "0") ||
               line.first.find("/pluginFactories/") != std::string::npos;
    });
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
