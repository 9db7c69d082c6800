#include "brenmark/reading_faults.h"

#include "brenmark/deck_text.h"
#include "brenmark/failure.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdlib>
#include <optional>

namespace NBrenmark {

namespace {

/// The path below a timestep or model of what a block of a file holds.
std::string pathOfBlock(const std::string& block)
{
    static const std::map<std::string, std::string> others{
        {"particle types", "particles"}, {"system energy", "energy"}, {"custom properties", "properties"}};
    if (const auto other = others.find(block); other != others.end())
        return other->second;
    std::string path;
    for (size_t i = 0; i < block.size(); ++i)
        if (block[i] == ' ' && ++i < block.size())
            path += static_cast<char>(std::toupper(static_cast<unsigned char>(block[i])));
        else if (i < block.size())
            path += block[i];
    return path;
}

/// What a message outside of blocks is about, by its words.
std::string pathOfWords(const std::string& text)
{
    static constexpr std::array<std::array<const char*, 2>, 4> words{
        {{" contact", "contacts"}, {" bond", "bonds"}, {" collision", "collisions"}, {"particle id", "particles"}}};
    for (const auto& [word, path] : words)
        if (text.find(word) != std::string::npos)
            return path;
    return std::string();
}

bool endsWith(const std::string& text, const std::string& end)
{
    return text.size() >= end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

/// The part of a deck's text that a message is about. "creator" of a file without a model of its own is none.
std::string placeOf(const SLogRecord& message)
{
    const SDataPlace& place = message.place;
    const bool isInModel = !place.timestep && endsWith(place.file, ".h5");
    if (!place.timestep && !isInModel) {
        if (endsWith(place.file, ".ess"))
            return "deck/settings";
        if (endsWith(place.file, ".dfg"))
            return "deck/configuration";
        return "deck";
    }
    const std::string root = isInModel ? modelRoot(static_cast<quint32>(std::strtoul(place.file.c_str(), nullptr, 10)))
                                       : timestepRoot(*place.timestep);
    const bool isBlock = !place.block.empty() && place.block != "creator data";
    const std::string below = isBlock ? pathOfBlock(place.block) : pathOfWords(message.text);
    return below.empty() ? root : root + '/' + below;
}

bool isAtOrBelow(const std::string& path, const std::string& place)
{
    return path == place || path.compare(0, place.size() + 1, place + '/') == 0;
}

std::string lettersOf(const std::string& text)
{
    std::string letters;
    for (const char c : text)
        if (std::isalnum(static_cast<unsigned char>(c)) != 0)
            letters += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return letters;
}

/// The name in quotes that follows one of these words.
std::string namedIn(const std::string& text)
{
    for (const char* const word : {"dataset \"", "group \"", "attribute \""}) {
        const size_t at = text.find(word);
        if (at == std::string::npos)
            continue;
        const size_t begin = text.find('"', at) + 1;
        return text.substr(begin, text.find('"', begin) - begin);
    }
    return std::string();
}

bool hasSegment(const std::string& path, const std::string& letters)
{
    for (size_t begin = 0; begin <= path.size();) {
        const size_t end = std::min(path.find('/', begin), path.size());
        if (lettersOf(path.substr(begin, end - begin)) == letters)
            return true;
        begin = end + 1;
    }
    return false;
}

/// Names that no reader knows change nothing of what is read.
bool isUnread(const SLogRecord& message) { return endsWith(message.text, "no reader knows it."); }

/// A message, and the differences that come from the same fault.
class CFault
{
public:
    explicit CFault(const SLogRecord& message)
        : place(placeOf(message)),
          name(lettersOf(namedIn(message.text))),
          absent(message.effect == eDefaulted ? lettersOf(NText::segment(message.place.object)) : std::string()),
          isUnreadName(isUnread(message)),
          isWholePart(place.find('/') == std::string::npos || place.find('/', place.find('/') + 1) == std::string::npos)
    {}

    bool isShownBy(const SDifference& difference) const
    {
        if (!isAtOrBelow(difference.place, place))
            return false;
        if (isUnreadName)
            return difference.kind == eOtherCount;
        if (!absent.empty() && hasSegment(difference.place, absent))
            return true;
        // Damage outside of blocks is reported with the name of what is damaged.
        return place != "deck" && (!isWholePart || (!name.empty() && hasSegment(difference.place, name)));
    }

    /// The same where the names of file and text are too different to be compared: what is missing there, or the only
    /// difference, comes from what can't be read there.
    bool mayBeShownBy(const SDifference& difference) const
    {
        return !isUnreadName && place != "deck" && difference.kind != eUnreadable &&
               isAtOrBelow(difference.place, place);
    }

    const std::string place;

private:
    const std::string name;
    const std::string absent; ///< an object that isn't stored; all of it may differ
    const bool isUnreadName;
    const bool isWholePart;
};

/// A part of the geometry that the model lacks has state in every timestep, and contacts.
bool followsFrom(const SConsequences& known, const std::string& place, const SLogRecord& message)
{
    const bool isState = endsWith(place, "/geometryGroups") && !known.gone.empty() &&
                         (isUnread(message) || message.text.find("the model has") != std::string::npos);
    const bool isContact = endsWith(place, "/contacts") && known.isGeometryGone() &&
                           message.text.find("triangle is missing") != std::string::npos;
    const bool isOfProperty = known.noProperties && (message.text.find("/CustomProperties") != std::string::npos ||
                                                     message.text.find("the settings define") != std::string::npos);
    return isOfProperty || (message.place.timestep && (isState || isContact));
}

/// What is said of the deck as a whole where the files of single timesteps are missing, or are those of others.
bool isOfTimesteps(const SDifference& difference)
{
    return difference.place == "deck" && (difference.detail.find("timestep data files") != std::string::npos ||
                                          endsWith(difference.detail, "the file of another timestep"));
}

/// "timestep/3".
bool isOfWholeTimestep(const SDifference& difference)
{
    const std::string& place = difference.place;
    return place.rfind("timestep/", 0) == 0 && std::count(place.begin(), place.end(), '/') == 1;
}

bool isSaidOfSource(const SLogRecord& message, const Ledger& ofSource)
{
    return std::any_of(ofSource.begin(), ofSource.end(), [&](const SLogRecord& other) {
        return other.text == message.text && other.place.timestep == message.place.timestep &&
               other.place.block == message.place.block;
    });
}

} // namespace

bool isReadingFault(const SLogRecord& message) { return isDamage(message.effect) || message.effect == eRepaired; }

void joinReadingFaults(std::vector<SDifference>& differences, const Ledger& messages, const Ledger& ofSource,
                       const SConsequences& known, const std::set<quint32>& reportedTimesteps)
{
    std::set<std::string> reported;
    for (const SLogRecord& message : messages) {
        const std::string detail = indented(withoutEnd(message.placedText()));
        const bool isReported = message.place.timestep && reportedTimesteps.count(*message.place.timestep) > 0;
        if (!isReadingFault(message) || isReported || isSaidOfSource(message, ofSource) ||
            !reported.insert(detail).second)
            continue;
        const CFault fault(message);
        if (followsFrom(known, fault.place, message))
            continue;
        const auto isBelow = [&](const SDifference& difference) { return fault.mayBeShownBy(difference); };
        const auto isMissing = [&](const SDifference& difference) {
            return isBelow(difference) && difference.kind == eMissing;
        };
        const auto below = std::count_if(differences.begin(), differences.end(), isBelow);
        const bool isOfAll = below == 1 || below == std::count_if(differences.begin(), differences.end(), isMissing);
        const auto shows = [&](const SDifference& difference) {
            return fault.isShownBy(difference) || (isOfAll && isBelow(difference));
        };
        const auto first = std::find_if(differences.begin(), differences.end(), shows);
        if (first == differences.end()) {
            differences.push_back({eUnreadable, fault.place, detail, std::string(), std::string()});
            continue;
        }
        if (isUnread(message))
            continue;
        if (first->kind != eUnreadable) {
            SDifference joined = *first;
            joined.kind = eUnreadable;
            joined.detail += "; " + detail;
            const auto number = std::count_if(differences.begin(), differences.end(), shows);
            if (number > 1)
                joined = {eUnreadable, fault.place, detail, std::string(), std::string()};
            *first = joined;
        }
        const auto others = std::next(first);
        differences.erase(
            std::remove_if(others, differences.end(),
                           [&](const SDifference& other) { return other.kind != eUnreadable && shows(other); }),
            differences.end());
    }

    if (std::any_of(differences.begin(), differences.end(), isOfWholeTimestep))
        differences.erase(std::remove_if(differences.begin(), differences.end(), isOfTimesteps), differences.end());
}

} // namespace NBrenmark
