// How the result of a comparison is printed.

#include "brenmark/commands.h"
#include "brenmark/digest_process.h"
#include "brenmark/failure.h"
#include "brenmark/progress_display.h"
#include "brenmark/terminal.h"
#include "brenmark/units_text.h"
#include "brenmark/verify.h"

#include <algorithm>

namespace NBrenmark {

/// How many lines each upgrade changed, in the order of the text.
static std::vector<std::pair<std::string, quint64>> countsByUpgrade(const std::vector<SModelChange>& meant)
{
    std::vector<std::pair<std::string, quint64>> counts;
    for (const SModelChange& change : meant) {
        auto count = std::find_if(counts.begin(), counts.end(),
                                  [&](const auto& entry) { return entry.first == change.upgrade; });
        if (count == counts.end())
            count = counts.insert(counts.end(), {change.upgrade, 0});
        ++count->second;
    }
    return counts;
}

static void printMeant(const std::vector<SModelChange>& meant)
{
    if (meant.empty())
        return;
    printResult("  upgraded to the current model: " + countText(meant.size(), "line") + "\n");
    for (const auto& [upgrade, count] : countsByUpgrade(meant))
        printResult("    " + upgrade + ": " + std::to_string(count) + '\n');
}

static void printNotCarried(const std::vector<std::string>& notCarried)
{
    if (notCarried.empty())
        return;
    printResult("  not carried, for the new format has no place for it:\n");
    for (const std::string& what : notCarried)
        printResult("    " + what + '\n');
}

static void printDigests(const std::string& source, const std::string& converted)
{
    if (source == converted && !source.empty())
        printResult("  digest of the values, the same of both: " + source + '\n');
    else
        printResult("  digest of the values: " + (source.empty() ? "none" : source) + " of the source, " +
                    (converted.empty() ? "none" : converted) + " of the converted deck\n");
}

static std::string kindsText(const std::vector<std::string>& parts)
{
    constexpr size_t most = 5;
    std::string text;
    for (size_t i = 0; i < std::min(parts.size(), most); ++i)
        text += (i > 0 ? "; " : "") + parts[i];
    return parts.size() > most ? text + "; and " + std::to_string(parts.size() - most) + " more kinds" : text;
}

static void printDifference(const SDifference& difference)
{
    printResult(difference.place + ": " + difference.detail + '\n');
    if (!difference.source.empty())
        printResult("  source     " + difference.source + '\n');
    if (!difference.converted.empty())
        printResult("  converted  " + difference.converted + '\n');
}

void printVerification(const SVerification& verification, const QString& source, const QString& converted)
{
    const std::string compared =
        countText(verification.timesteps, "timestep") + " compared in " + durationText(verification.seconds) + ", ";
    const std::string lost = verification.lost.empty() ? "" : "; lost: " + kindsText(verification.lost);
    std::for_each(verification.differences.begin(), verification.differences.end(), printDifference);
    switch (verification.verdict()) {
    case eHoldsAll:
        printResult(utf8(converted) + ": holds all of " + utf8(source) + ": " + compared + "no difference\n");
        break;
    case eHoldsWhatCouldBeRead:
        printResult(utf8(converted) + ": holds all that could be read of " + utf8(source) + ": " + compared +
                    "no difference" + lost + '\n');
        break;
    case eDiffers:
        printResult(utf8(converted) + ": differs from " + utf8(source) + ": " + compared +
                    countText(verification.differences.size(), "difference") +
                    (verification.more ? " shown, more not shown" : "") + lost + '\n');
        break;
    }
    printMeant(verification.meant);
    printNotCarried(verification.notCarried);
    printDigests(verification.sourceDigest.whole, verification.convertedDigest.whole);
}

Json jsonVerification(const SVerification& verification)
{
    const auto side = [](const std::string& value) { return value.empty() ? Json() : Json(value); };
    Json differences = Json::array();
    for (const SDifference& difference : verification.differences)
        differences.push_back({{"place", difference.place},
                               {"detail", difference.detail},
                               {"source", side(difference.source)},
                               {"converted", side(difference.converted)}});
    Json meant = Json::array();
    for (const SModelChange& change : verification.meant)
        meant.push_back({{"upgrade", change.upgrade},
                         {"path", change.path},
                         {"stored", side(change.stored)},
                         {"upgraded", side(change.upgraded)}});
    return {{"equal", verification.equal()},
            {"verdict", verdictName(verification.verdict())},
            {"lost", verification.lost},
            {"notCarried", verification.notCarried},
            {"timesteps", verification.timesteps},
            {"seconds", verification.seconds},
            {"differences", differences},
            {"more", verification.more},
            {"meant", meant},
            {"sourceDigest", side(verification.sourceDigest.whole)},
            {"convertedDigest", side(verification.convertedDigest.whole)},
            {"messages", jsonMessages(verification.messages)}};
}

/// A deck against the digest that its source had once.
static EExitCode verifyByDigest(const SVerifyOptions& options)
{
    const SValueDigest wanted = readDigestFile(options.digest);
    SDeckDigest deck;
    {
        CProgressDisplay progress(false, eNothingElsewhere);
        deck = digestOf(options.source, "reading deck,", eIsNoted, progress);
    }
    const SValueDigest found = valueDigestOf(deck);
    const std::vector<std::string> places = digestDifferences(wanted, found);
    const std::vector<std::string> faults = newFaults(wanted, found);
    const EExitCode code = wanted.whole == found.whole && faults.empty() ? eExitDone : eExitDifferent;
    printLedger(deck.messages, eWithoutUpgrades);
    unlessReaderIsGone([&] {
        if (options.json) {
            printJson({{"result", code == eExitDone ? "equal" : "different"},
                       {"code", code},
                       {"deck", utf8(options.source)},
                       {"digestFile", utf8(options.digest)},
                       {"wanted", wanted.whole},
                       {"found", found.whole.empty() ? Json() : Json(found.whole)},
                       {"places", places},
                       {"faults", faults},
                       {"error", nullptr}});
            return;
        }
        for (const std::string& place : places)
            printResult(place + ": not the values of the digest\n");
        for (const std::string& fault : faults)
            printResult(fault + '\n');
        printResult(utf8(options.source) + (code == eExitDone ? ": holds the values of " : ": differs from ") +
                    utf8(options.digest) + ": " + countText(found.timesteps.size(), "timestep") + ", digest " +
                    (found.whole.empty() ? "none" : found.whole) + '\n');
        flushResult();
    });
    return code;
}

EExitCode runVerify(const SVerifyOptions& options)
{
    if (options.parts) {
        answerDigestRequests(options.source);
        return eExitDone;
    }
    if (!options.digest.isEmpty())
        return verifyByDigest(options);
    SVerification verification;
    {
        CProgressDisplay progress(false, eNothingElsewhere);
        verification = verify(options.source, options.converted, options.limit, progress);
    }
    printLedger(verification.messages, eWithoutUpgrades);
    const EExitCode code = verification.exitCode();
    if (options.json) {
        Json object{{"result", verdictName(verification.verdict())},
                    {"code", code},
                    {"source", utf8(options.source)},
                    {"converted", utf8(options.converted)},
                    {"error", nullptr}};
        object.update(jsonVerification(verification));
        unlessReaderIsGone([&] { printJson(object); });
        return code;
    }
    unlessReaderIsGone([&] {
        printVerification(verification, options.source, options.converted);
        flushResult();
    });
    return code;
}

} // namespace NBrenmark
