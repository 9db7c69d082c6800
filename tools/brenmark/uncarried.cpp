#include "brenmark/uncarried.h"

#include "config/config_number.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <regex>

namespace NBrenmark {

/// Whether no group can have the name of a factory of a plug-in; "Mill#2" is the second one of a name.
static bool hasNoGroup(const std::string& factory)
{
    const auto holds = [&factory](const char* part) { return factory.find(part) != std::string::npos; };
    return factory == "." || holds("%2f") || holds("%00") || holds("#");
}

/// Charges that aren't custom properties, and what old contacts held beside their rows.
bool isOfLegacyAlone(const std::string& path)
{
    std::array<std::string, 4> parts; // the last one with all that is below
    size_t count = 0;
    for (size_t begin = 0; count < parts.size() && begin <= path.size(); ++count) {
        const size_t end = count + 1 < parts.size() ? std::min(path.find('/', begin), path.size()) : path.size();
        parts[count] = path.substr(begin, end - begin);
        begin = end + 1;
    }
    const auto& [area, name, value, below] = parts;
    if (area == "sizeDistributions") // the law of a type that no group can be named after
        return count == 2 && name.find("%2f") != std::string::npos;
    if (area == "pluginFactories")
        return count > 1 && hasNoGroup(name);
    if (area == "contacts" && value == "contactRecords")
        return true;
    return count == 3 && ((area == "geometryGroups" && value == "charges") ||
                          (area == "particles" && (value == "charge" || value == "electrostaticForce")) ||
                          (area == "contacts" && (value == "legacyScalar" || value == "legacyFlags")));
}

static bool isLegacyArray(const SDifference& difference)
{
    const std::string& place = difference.place;
    const bool isOfTimestep = place.compare(0, 9, "timestep/") == 0;
    const size_t root = place.find('/', isOfTimestep ? 9 : 0);
    return difference.kind == eMissing && (isOfTimestep || place.compare(0, 7, "creator") == 0) &&
           root != std::string::npos && isOfLegacyAlone(place.substr(root + 1));
}

/// The numbers of a text, and what is between them.
static std::vector<std::string> tokens(const std::string& text)
{
    static const std::regex number("[-+]?[0-9.]+([eE][-+]?[0-9]+)?");
    std::vector<std::string> found;
    auto begin = text.cbegin();
    for (std::sregex_iterator at(text.begin(), text.end(), number), end; at != end; ++at) {
        found.emplace_back(begin, (*at)[0].first);
        found.push_back(at->str());
        begin = (*at)[0].second;
    }
    found.emplace_back(begin, text.cend());
    return found;
}

/// Whether a number became another one only because a configuration file has six digits for it.
static bool isRounded(const std::string& source, const std::string& converted)
{
    double from = 0.0, to = 0.0, shortest = 0.0, fixed = 0.0;
    return NConfig::parseDouble(source, from) && NConfig::parseDouble(converted, to) &&
           NConfig::parseDouble(NConfig::generalText(from), shortest) &&
           NConfig::parseDouble(NConfig::fixedText(from), fixed) && (to == shortest || to == fixed);
}

static bool isRoundedValue(const SDifference& difference)
{
    if (difference.place.compare(0, std::strlen("deck/configuration/"), "deck/configuration/") != 0 ||
        difference.kind != eOtherValue || difference.source.find("STRING") != std::string::npos)
        return false;
    const std::vector<std::string> source = tokens(difference.source);
    const std::vector<std::string> converted = tokens(difference.converted);
    if (source.size() != converted.size())
        return false;
    for (size_t i = 0; i < source.size(); ++i)
        if (source[i] != converted[i] && (i % 2 == 0 || !isRounded(source[i], converted[i])))
            return false;
    return true;
}

bool hasNoPlace(const SDifference& difference) { return isLegacyArray(difference) || isRoundedValue(difference); }

} // namespace NBrenmark
