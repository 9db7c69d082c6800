// brenmark verify: compares two decks by their texts. One deck is open in a process at a time, so each is read by
// itself, and again for what differs.

#include "brenmark/verify.h"

#include "brenmark/deck_digest.h"
#include "brenmark/deck_family.h"
#include "brenmark/deck_text.h"
#include "brenmark/digest_process.h"
#include "brenmark/plugins/plugin_changes.h"
#include "brenmark/progress_display.h"
#include "brenmark/reading_faults.h"
#include "brenmark/uncarried.h"
#include "brenmark/units_text.h"

#include "core/memory_ceiling.h"

#include <QFileInfo>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstring>
#include <functional>
#include <optional>

namespace NBrenmark {

namespace {

constexpr quint32 noTimestep = CTimestepData::noTimestep;

/// The bits on purpose: 0.0 and -0.0 differ here, and a NaN is itself.
bool sameBits(double a, double b)
{
    quint64 bitsOfA = 0, bitsOfB = 0;
    std::memcpy(&bitsOfA, &a, sizeof a);
    std::memcpy(&bitsOfB, &b, sizeof b);
    return bitsOfA == bitsOfB;
}

/// Pairs of timestep numbers that belong together; noTimestep on the side where one is missing.
/// Decks of one length go by number. Otherwise one lost a timestep, and the times show which.
std::vector<std::pair<quint32, quint32>> pairs(const SDeckDigest& source, const SDeckDigest& converted)
{
    std::vector<std::pair<quint32, quint32>> result;
    const auto sourceCount = static_cast<quint32>(source.timesteps.size());
    const auto convertedCount = static_cast<quint32>(converted.timesteps.size());
    quint32 next = 0;
    for (quint32 i = 0; i < sourceCount; ++i) {
        if (sourceCount == convertedCount) {
            result.emplace_back(i, i);
            continue;
        }
        quint32 j = next;
        while (j < convertedCount && !sameBits(source.timesteps[i].time, converted.timesteps[j].time))
            ++j;
        if (j == convertedCount) {
            result.emplace_back(i, noTimestep);
            continue;
        }
        for (; next < j; ++next)
            result.emplace_back(noTimestep, next);
        result.emplace_back(i, j);
        next = j + 1;
    }
    for (; sourceCount != convertedCount && next < convertedCount; ++next)
        result.emplace_back(noTimestep, next);
    return result;
}

/// What upgrades changed in the models of a legacy deck must be what they are meant to: both decks would agree on what
/// they lost.
void judgeUpgrades(const SDeckDigest& digest, SVerification& result)
{
    std::set<std::array<std::string, 3>> known; // of models that follow one another most changes are the same
    for (const SDeckDigest::SModel& model : digest.models) {
        const size_t root = modelRoot(model.firstTimestep).size();
        for (const SModelChange& change : model.changes) {
            if (change.upgrade.empty())
                result.differences.push_back({eOtherValue, change.path, "not as stored, and no upgrade explains it",
                                              change.stored, change.upgraded});
            else if (known.insert({change.path.substr(root), change.stored, change.upgraded}).second)
                result.meant.push_back(change);
        }
    }
}

std::string timeText(const SDeckDigest::STimestep& timestep) { return "time " + NText::text(timestep.time); }

/// The converted deck is no source: that it can't be read says something about what was written.
template <class TBody>
auto readingConverted(const QString& source, const QString& converted, bool isConversion, TBody&& body)
{
    try {
        return body();
    }
    catch (CFailure& failure) {
        if (failure.code != eExitSource || !isConversion)
            throw;
        failure.code = eExitTarget;
        failure.advice = "Convert the source again: brenmark convert --force " + utf8(source) + ' ' + utf8(converted);
        throw;
    }
}

// ---------------------------------------------------------------- companions

const QLatin1String companionSuffixes[] = {NDeckFile::settingsSuffix, NDeckFile::configurationSuffix,
                                           NDeckFile::companionSuffix};

/// Where the content of a companion is in the text of a deck.
std::string placeOfCompanion(QLatin1String suffix)
{
    return suffix == NDeckFile::settingsSuffix        ? "deck/settings"
           : suffix == NDeckFile::configurationSuffix ? "deck/configuration"
                                                      : "deck/companion";
}

/// A conversion writes settings and configuration whether the source has them or not.
bool isMissing(const QString& source, const QString& converted, QLatin1String suffix, bool isConversion)
{
    const bool isExpected =
        QFileInfo::exists(stripDeckSuffix(source) + suffix) || (isConversion && suffix != NDeckFile::companionSuffix);
    return isExpected && !QFileInfo::exists(stripDeckSuffix(converted) + suffix);
}

/// Compares what is beside the timesteps.
void compareBeside(const QString& source, const SDeckDigest& first, const QString& converted, const SDeckDigest& second,
                   std::vector<SDifference>& differences, SConsequences& known)
{
    differences = textDifferences(first.beside, second.beside, "deck", known);
    const auto remove = [&](const std::string& place) {
        const auto isBelow = [&](const SDifference& difference) {
            return difference.place.compare(0, place.size(), place) == 0;
        };
        differences.erase(std::remove_if(differences.begin(), differences.end(), isBelow), differences.end());
    };
    remove("deck/timesteps"); // reported one by one
    const bool isConversion = first.format != second.format;
    for (const QLatin1String suffix : companionSuffixes) {
        if (!isMissing(source, converted, suffix, isConversion))
            continue;
        const std::string place = placeOfCompanion(suffix);
        remove(place);
        differences.push_back(
            {eMissing, place, utf8(stripDeckSuffix(converted) + suffix) + " is missing", std::string(), std::string()});
        known.noProperties = known.noProperties || suffix == NDeckFile::settingsSuffix;
    }
    for (const SDifference& difference : differences)
        known.note(difference, std::string());
}

// ---------------------------------------------------------------- timesteps

/// The timestep of the source that is in the place of another, if it is one.
std::optional<size_t> copiedFrom(const SDeckDigest& source, size_t own, const SDeckDigest::STimestep& converted)
{
    for (size_t i = 0; i < source.timesteps.size(); ++i)
        if (i != own && source.timesteps[i].text == converted.text)
            return i;
    return std::nullopt;
}

/// Failures of one cause are one difference: a file that many timesteps need is damaged once.
void reportUnreadable(const SDeckDigest& converted, std::vector<SDifference>& differences)
{
    std::map<std::string, size_t> reported; // cause, difference
    for (size_t number = 0; number < converted.timesteps.size(); ++number) {
        const std::string& failure = converted.timesteps[number].failure;
        if (failure.empty())
            continue;
        const size_t cause = failure.find(": ", failure.find(", timestep "));
        const auto [known, isNew] =
            reported.emplace(failure.substr(std::min(cause, failure.size())), differences.size());
        if (isNew)
            differences.push_back({eUnreadable, timestepRoot(static_cast<quint32>(number)), withoutEnd(failure),
                                   std::string(), std::string()});
        else
            differences[known->second].detail += "; nor can timestep " + std::to_string(number);
    }
}

/// What is to be compared line by line, with what is said of timesteps as a whole.
class CTimestepPairs
{
public:
    CTimestepPairs(const SDeckDigest& first, const SDeckDigest& second) : first(first), second(second)
    {
        for (const auto& [i, j] : pairs(first, second))
            compare(i, j);
        reportUnreadable(second, differences);
    }

    std::vector<SDifference> differences;
    std::set<quint32> reportedTimesteps; ///< of the converted deck
    std::vector<SPart> models;
    std::vector<SPart> timesteps;

private:
    void compare(quint32 i, quint32 j)
    {
        if (j == noTimestep) {
            differences.push_back({eMissing, timestepRoot(i), "missing in the converted deck",
                                   timeText(first.timesteps[i]), std::string()});
            return;
        }
        const SDeckDigest::STimestep& b = second.timesteps[j];
        if (i == noTimestep) {
            differences.push_back({eExtra, timestepRoot(j), "only in the converted deck", std::string(), timeText(b)});
            reportedTimesteps.insert(j);
            return;
        }
        const SDeckDigest::STimestep& a = first.timesteps[i];
        if (!b.failure.empty()) {
            reportedTimesteps.insert(j);
            return;
        }
        const SDeckDigest::SModel& model = first.models[a.model];
        if (model.text != second.models[b.model].text && seen.emplace(a.model, b.model).second)
            models.push_back({true, i, j, modelRoot(model.firstTimestep)});
        if (a.text == b.text)
            return;
        if (const std::optional<size_t> copied = copiedFrom(first, i, b)) {
            differences.push_back({eOtherValue, timestepRoot(i),
                                   "timestep " + std::to_string(*copied) + " in the place of this one", timeText(a),
                                   timeText(b)});
            reportedTimesteps.insert(j);
            return;
        }
        timesteps.push_back({false, i, j, timestepRoot(i)});
    }

    const SDeckDigest& first;
    const SDeckDigest& second;
    std::set<std::pair<size_t, size_t>> seen;
};

void removeAllowed(std::vector<SDifference>& differences, const std::vector<SPart>& parts, const QString& source,
                   const STolerances& tolerances)
{
    if (!tolerances.isGiven())
        return;
    allowValues(differences, parts, source, tolerances);
    const auto isAllowed = [&](const SDifference& difference) { return difference.kind == eWithinTolerance; };
    differences.erase(std::remove_if(differences.begin(), differences.end(), isAllowed), differences.end());
}

/// Parts are compared so many at a time: their lines are held of both decks.
constexpr size_t partsAtATime = 16;

/// Appends the differences of parts, as many as are wanted. \return whether there may be others
bool compareParts(const QString& source, const QString& converted, const std::vector<SPart>& parts, size_t limit,
                  const STolerances& tolerances, SConsequences& known, std::vector<SDifference>& differences)
{
    for (size_t begin = 0; begin < parts.size(); begin += partsAtATime) {
        if (limit > 0 && differences.size() > limit)
            return true;
        const auto from = parts.begin() + static_cast<std::ptrdiff_t>(begin);
        const std::vector<SPart> some(from,
                                      from + static_cast<std::ptrdiff_t>(std::min(partsAtATime, parts.size() - begin)));
        const std::vector<TextLines> a = linesOf(source, some, &SPart::source);
        const std::vector<TextLines> b = linesOf(converted, some, &SPart::converted);
        std::vector<SDifference> found;
        for (size_t i = 0; i < some.size(); ++i) {
            const std::vector<SDifference> ofPart = textDifferences(a[i], b[i], some[i].root, known);
            for (const SDifference& difference : ofPart)
                if (some[i].isModel)
                    known.note(difference, some[i].root);
            std::copy_if(ofPart.begin(), ofPart.end(), std::back_inserter(found), [&](const SDifference& difference) {
                return !known.isGeometryGone() ||
                       difference.place.find("/contacts/surfaceGeometry") == std::string::npos;
            });
        }
        describeArrays(found, some, source, converted, tolerances);
        removeAllowed(found, some, source, tolerances);
        differences.insert(differences.end(), found.begin(), found.end());
    }
    return false;
}

std::vector<STimestepFigures> figuresOf(const SDeckDigest& deck)
{
    std::vector<STimestepFigures> figures;
    for (const SDeckDigest::STimestep& timestep : deck.timesteps)
        if (timestep.failure.empty())
            figures.push_back(timestep.figures);
    return figures;
}

/// What has no place in the current family isn't a difference.
void setUncarriedApart(SVerification& result)
{
    std::map<std::string, size_t> uncarried; // place without its timestep, how often
    const auto isUncarried = [&](const SDifference& difference) {
        if (!hasNoPlace(difference))
            return false;
        const bool isOfTimestep = difference.place.compare(0, 9, "timestep/") == 0;
        ++uncarried[isOfTimestep ? "timestep/*" + difference.place.substr(difference.place.find('/', 9))
                                 : difference.place];
        return true;
    };
    result.differences.erase(std::remove_if(result.differences.begin(), result.differences.end(), isUncarried),
                             result.differences.end());
    for (const auto& [place, times] : uncarried)
        result.notCarried.push_back(place + (times > 1 ? ", " + std::to_string(times) + " times" : std::string()));
}

} // namespace

EExitCode SVerification::exitCode() const
{
    switch (verdict()) {
    case eHoldsAll: return eExitDone;
    case eHoldsWhatCouldBeRead: return eExitSource;
    case eDiffers: break;
    }
    return eExitDifferent;
}

const char* verdictName(EVerdict verdict)
{
    return verdict == eHoldsAll ? "equal" : verdict == eHoldsWhatCouldBeRead ? "partial" : "different";
}

/// \param readConverted  gives the digest of the converted deck
static SVerification compared(const SDeckDigest& first, const std::function<SDeckDigest()>& readConverted,
                              const QString& source, const QString& converted, unsigned int limit,
                              CProgressDisplay& progress, const SComparison& comparison)
{
    const auto begin = std::chrono::steady_clock::now();
    SVerification result;
    setLeastMemoryCeiling(mostMemoryTaken()); // the converted deck may be deflated, and the source not
    result.timesteps = static_cast<quint32>(first.timesteps.size());
    result.lost = linesOf(first.messages, [](const SLogRecord& message) { return isDamage(message.effect); });
    result.notCarried =
        linesOf(first.messages, [](const SLogRecord& message) { return message.effect == eNotCarried; });
    result.messages = first.messages;
    result.sourceDigest = valueDigestOf(first);
    result.sourceFigures = figuresOf(first);

    readingConverted(source, converted, comparison.isConversion, [&] {
        const SDeckDigest second = readConverted();
        progress.clear();
        result.convertedDigest = valueDigestOf(second);
        result.convertedFigures = figuresOf(second);
        std::copy_if(second.messages.begin(), second.messages.end(), std::back_inserter(result.messages),
                     [](const SLogRecord& message) { return !isReadingFault(message) && message.level < eError; });

        std::vector<SDifference>& differences = result.differences;
        SConsequences known;
        compareBeside(source, first, converted, second, differences, known);
        removeAllowed(differences, std::vector<SPart>(), source, comparison.tolerances);
        if (comparison.isConversion)
            judgeUpgrades(first, result);
        CTimestepPairs timesteps(first, second);
        differences.insert(differences.end(), timesteps.differences.begin(), timesteps.differences.end());
        result.more =
            compareParts(source, converted, timesteps.models, limit, comparison.tolerances, known, differences) ||
            compareParts(source, converted, timesteps.timesteps, limit, comparison.tolerances, known, differences);
        if (first.format == eFormatLegacy && second.format == eFormatHdf5) {
            setUncarriedApart(result);
            const bool hasPlugins = std::any_of(first.models.begin(), first.models.end(),
                                                [](const auto& model) { return model.namesPlugins; });
            if (hasPlugins) {
                const std::vector<SModelChange> ofPlugins = takePluginChanges(differences, second.beside);
                result.meant.insert(result.meant.end(), ofPlugins.begin(), ofPlugins.end());
            }
        }
        if (comparison.isConversion && second.format == eFormatHdf5) {
            const std::vector<SDifference> stored =
                second.storing.differences(first.storing.edition(), first.format == eFormatLegacy);
            differences.insert(differences.end(), stored.begin(), stored.end());
        }
        joinReadingFaults(differences, second.messages, first.messages, known, timesteps.reportedTimesteps);
    });
    setLeastMemoryCeiling(0);
    if (limit > 0 && result.differences.size() > limit) {
        result.differences.resize(limit);
        result.more = true;
    }
    result.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
    return result;
}

static SDeckDigest digestOfConverted(const QString& path, CProgressDisplay& progress, const DigestParts& read = {})
{
    return digestOf(path, "reading converted,", eIsNoted, progress, read);
}

static bool isWorthAProcess(const QString& source, const QString& converted)
{
    return CDigestProcess::isPossible() && headOf(converted).format == eFormatHdf5 &&
           static_cast<double>(bytesOf(familyFiles(source))) >= CDigestProcess::leastBytes;
}

SVerification verify(const QString& source, const QString& converted, unsigned int limit, CProgressDisplay& progress,
                     const SComparison& comparison)
{
    const auto begin = std::chrono::steady_clock::now();
    CDigestProcess other(converted); // reads it while this process reads the source
    const bool isRead = isWorthAProcess(source, converted) && other.askForAll();
    const SDeckDigest first = digestOf(source, "reading source,", eEndsTheReading, progress);
    const std::optional<SDigestPart> second = isRead ? other.lastAnswer() : std::nullopt;
    const auto readConverted = [&] { return second ? second->digest : digestOfConverted(converted, progress); };
    SVerification result = compared(first, readConverted, source, converted, limit, progress, comparison);
    result.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
    return result;
}

SVerification verify(const SDeckDigest& first, const DigestParts& read, const QString& source, const QString& converted,
                     CProgressDisplay& progress)
{
    const auto readConverted = [&] { return digestOfConverted(converted, progress, read); };
    return compared(first, readConverted, source, converted, defaultDifferenceLimit, progress, SComparison());
}

} // namespace NBrenmark
