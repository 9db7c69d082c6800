// brenmark diff: only the differences, as the field knows it.

#include "brenmark/diff/diff.h"

#include "brenmark/failure.h"
#include "brenmark/progress_display.h"
#include "brenmark/terminal.h"
#include "brenmark/units_text.h"
#include "brenmark/verify.h"

#include "core/deck/deck_files.h"

#include <utility>

namespace NBrenmark {

constexpr auto eExitTrouble = static_cast<EExitCode>(2);

/// The comparison speaks of a source and of what it was converted into. Here no deck is the other's source.
static std::string inOwnWords(std::string text, const SDiffOptions& options, bool isSwapped)
{
    const std::string first = utf8(isSwapped ? options.second : options.first);
    const std::string second = utf8(isSwapped ? options.first : options.second);
    for (const auto& [words, name] :
         {std::pair<std::string, std::string>("the converted deck", second), {"the source", first}})
        for (size_t at = text.find(words); at != std::string::npos; at = text.find(words, at + name.size()))
            text.replace(at, words.size(), name);
    return text;
}

static std::string detailOf(const SDifference& difference, const SDiffOptions& options, bool isSwapped)
{
    const bool isOnlyFirst = difference.kind == (isSwapped ? eExtra : eMissing);
    const bool isOnlySecond = difference.kind == (isSwapped ? eMissing : eExtra);
    if ((isOnlyFirst || isOnlySecond) && difference.detail.find("the converted deck") != std::string::npos)
        return "only in " + utf8(isOnlyFirst ? options.first : options.second);
    return inOwnWords(difference.detail, options, isSwapped);
}

static void printDiff(const SVerification& found, const SDiffOptions& options, bool isSwapped)
{
    if (options.isBrief) {
        if (!found.equal())
            printResult(utf8(options.first) + " and " + utf8(options.second) + " differ\n");
        return;
    }
    for (const SDifference& difference : found.differences) {
        const std::string& a = isSwapped ? difference.converted : difference.source;
        const std::string& b = isSwapped ? difference.source : difference.converted;
        printResult(difference.place + ": " + detailOf(difference, options, isSwapped) + '\n' +
                    (a.empty() ? "" : "< " + a + '\n') + (b.empty() ? "" : "> " + b + '\n'));
    }
    if (found.more)
        printResult("and more, beyond the limit\n");
}

static Json jsonDiff(const SVerification& found, const SDiffOptions& options, bool isSwapped)
{
    const auto side = [](const std::string& value) { return value.empty() ? Json() : Json(value); };
    Json list = Json::array();
    for (const SDifference& difference : found.differences)
        list.push_back({{"place", difference.place},
                        {"detail", detailOf(difference, options, isSwapped)},
                        {"first", side(isSwapped ? difference.converted : difference.source)},
                        {"second", side(isSwapped ? difference.source : difference.converted)}});
    return {{"result", found.equal() ? "equal" : "different"},
            {"code", found.equal() ? eExitDone : eExitDifferent},
            {"first", utf8(options.first)},
            {"second", utf8(options.second)},
            {"differences", list},
            {"more", found.more},
            {"error", nullptr}};
}

EExitCode runDiff(const SDiffOptions& options)
{
    try {
        SComparison comparison;
        comparison.tolerances = options.tolerances;
        comparison.isConversion = false;
        // What the current family has no place for is known of a legacy deck that comes first.
        const bool isSwapped =
            detectFormat(options.second) == eFormatLegacy && detectFormat(options.first) == eFormatHdf5;
        SVerification found;
        {
            CProgressDisplay progress(false, eNothingElsewhere);
            found = verify(isSwapped ? options.second : options.first, isSwapped ? options.first : options.second,
                           options.limit, progress, comparison);
        }
        printLedger(found.messages, eWithoutUpgrades);
        unlessReaderIsGone([&] {
            if (options.json)
                printJson(jsonDiff(found, options, isSwapped));
            else
                printDiff(found, options, isSwapped);
            flushResult();
        });
        return found.equal() ? eExitDone : eExitDifferent;
    }
    catch (CFailure& failure) {
        failure.code = eExitTrouble;
        if (options.json)
            unlessReaderIsGone([&] { printJson({{"error", jsonFailure(failure)}}); });
        printFailure(failure);
        return eExitTrouble;
    }
}

} // namespace NBrenmark
