#include "brenmark/uncarried.h"

#include "config/config_number.h"

#include <cstring>
#include <regex>

namespace NBrenmark {

/// Charges that aren't custom properties, and what old contacts held beside their rows.
static bool isLegacyArray(const SDifference& difference)
{
    static const std::regex places(
        "(timestep/[0-9]+|creator(@[0-9]+)?)/("
        "geometryGroups/[^/]+/charges|"
        "particles/[^/]+/(charge|electrostaticForce)|"
        "sizeDistributions/[^/]*%2f[^/]*|" // the law of a type that no group can be named after
        "contacts/[^/]+/(legacyScalar|legacyFlags|contactRecords(/.*)?))");
    return difference.kind == eMissing && std::regex_match(difference.place, places);
}

/// A factory of a plug-in that no group can be named after, or the second one of a name.
static bool isFactoryWithoutGroup(const SDifference& difference)
{
    const std::string list = "/pluginFactories/";
    const std::size_t at = difference.place.find(list);
    if (difference.kind != eMissing || at == std::string::npos)
        return false;
    const std::string name = difference.place.substr(at + list.size());
    return name == "." || name.find("%2f") != std::string::npos || name.find("%00") != std::string::npos ||
           name.find('#') != std::string::npos;
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

bool hasNoPlace(const SDifference& difference)
{
    return isLegacyArray(difference) || isFactoryWithoutGroup(difference) || isRoundedValue(difference);
}

} // namespace NBrenmark
