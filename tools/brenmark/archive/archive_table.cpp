#include "brenmark/archive/archive_table.h"

#include "brenmark/failure.h"
#include "brenmark/terminal.h"
#include "brenmark/units_text.h"

#include <algorithm>
#include <array>

namespace NBrenmark {

constexpr size_t mostFailures = 20; // more would bury the table; the journal has them all

void CArchiveTable::add(const SDeckOutcome& outcome)
{
    SRow& row = rows[{outcome.state, outcome.reason}];
    ++row.decks;
    row.bytesRead += outcome.bytesRead;
    row.bytesWritten += outcome.bytesWritten;
    if (outcome.state == eDeckFailed && failures.size() < mostFailures)
        failures.push_back(outcomeLine(outcome) + '\n');
}

void CArchiveTable::add(const SRunState& state)
{
    std::vector<const SDeckOutcome*> sorted;
    sorted.reserve(state.outcomes.size());
    for (const auto& [deck, outcome] : state.outcomes)
        sorted.push_back(&outcome);
    std::sort(sorted.begin(), sorted.end(),
              [](const SDeckOutcome* a, const SDeckOutcome* b) { return a->deck < b->deck; });
    for (const SDeckOutcome* const outcome : sorted)
        add(*outcome);
}

CArchiveTable::SRow CArchiveTable::sum(EDeckState state) const
{
    SRow all;
    for (const auto& [key, row] : rows) {
        if (key.first != state)
            continue;
        all.decks += row.decks;
        all.bytesRead += row.bytesRead;
        all.bytesWritten += row.bytesWritten;
    }
    return all;
}

quint64 CArchiveTable::count(EDeckState state) const { return sum(state).decks; }

quint64 CArchiveTable::done() const
{
    return count(eDeckConverted) + count(eDeckWithLosses) + count(eDeckSkipped) + count(eDeckFailed);
}

EExitCode CArchiveTable::exitCode() const
{
    return count(eDeckInterrupted) > 0  ? eExitInterrupted
           : count(eDeckFailed) > 0     ? eExitDifferent
           : count(eDeckWithLosses) > 0 ? eExitSource
                                        : eExitDone;
}

static std::string rightAligned(const std::string& text, size_t width)
{
    return std::string(width > text.size() ? width - text.size() : 0, ' ') + text;
}

static std::string tableLine(const std::string& what, quint64 decks, const std::string& more)
{
    constexpr size_t wordColumns = 48, numberColumns = 8;
    return "  " + what + std::string(wordColumns > what.size() ? wordColumns - what.size() : 1, ' ') +
           rightAligned(std::to_string(decks), numberColumns) + (more.empty() ? "" : "   " + more) + '\n';
}

void CArchiveTable::print(double seconds, quint64 decks) const
{
    constexpr std::array shown{eDeckConverted, eDeckWithLosses, eDeckSkipped, eDeckFailed};
    const auto size = [](qint64 bytes) { return sizeText(static_cast<double>(bytes)); };
    for (const std::string& failure : failures)
        printResult(failure);
    if (const quint64 all = count(eDeckFailed); all > failures.size())
        printResult("and " + std::to_string(all - failures.size()) +
                    " more that failed; the journal has all of them\n");
    for (const EDeckState state : shown) {
        const SRow all = sum(state);
        printResult(tableLine(deckStateName(state), all.decks,
                              isMade(state) && all.decks > 0
                                  ? size(all.bytesRead) + " read, " + size(all.bytesWritten) + " written"
                                  : std::string()));
        for (const auto& [key, row] : rows)
            if (key.first == state && !key.second.empty())
                printResult(tableLine("  " + key.second, row.decks, std::string()));
    }
    if (const quint64 left = decks - std::min(decks, done()); left > 0)
        printResult(tableLine("not done yet", left, std::string()));
    printResult(tableLine("in all", decks, "in " + durationText(seconds)));
    flushResult();
}

Json CArchiveTable::json() const
{
    Json table = Json::array();
    for (const auto& [key, row] : rows) {
        if (!isFinal(key.first))
            continue;
        table.push_back({{"state", deckStateName(key.first)},
                         {"reason", key.second.empty() ? Json() : Json(key.second)},
                         {"decks", row.decks},
                         {"bytesRead", row.bytesRead},
                         {"bytesWritten", row.bytesWritten}});
    }
    return table;
}

std::string outcomeLine(const SDeckOutcome& outcome)
{
    std::string text = outcome.deck + ": " + deckStateName(outcome.state);
    if (isMade(outcome.state))
        text += ": " + countText(outcome.timesteps, "timestep") + ", " +
                sizeText(static_cast<double>(outcome.bytesRead)) + " read, " +
                sizeText(static_cast<double>(outcome.bytesWritten)) + " written in " + durationText(outcome.seconds);
    else if (!outcome.reason.empty())
        text += ": " + outcome.reason;
    if (outcome.state == eDeckWithLosses && !outcome.losses.empty())
        text += "; lost: " + outcome.losses.front() +
                (outcome.losses.size() > 1 ? " and " + std::to_string(outcome.losses.size() - 1) + " more" : "");
    if (!outcome.text.empty())
        text += ": " + outcome.text;
    return indented(text);
}

/// A deck at a time: as one value, a hundred thousand would take more memory than the run itself.
void printArchiveJson(const std::string& folder, const CArchiveTable& table, const SRunState& state, EExitCode code)
{
    const auto dumped = [](const Json& value) { return value.dump(-1, ' ', false, Json::error_handler_t::replace); };
    std::vector<const SDeckOutcome*> sorted;
    for (const auto& [deck, outcome] : state.outcomes)
        sorted.push_back(&outcome);
    std::sort(sorted.begin(), sorted.end(),
              [](const SDeckOutcome* a, const SDeckOutcome* b) { return a->deck < b->deck; });
    const Json head{{"code", code},
                    {"folder", folder},
                    {"announced", state.decks},
                    {"isEnded", state.isEnded},
                    {"seconds", state.seconds},
                    {"table", table.json()},
                    {"error", nullptr}};
    std::string text = dumped(head);
    text.pop_back(); // the brace
    printResult(text + ",\"decks\":[");
    const char* separator = "\n";
    for (const SDeckOutcome* const outcome : sorted) {
        SDeckOutcome shown = *outcome;
        shown.page.clear(); // which is for the page alone
        printResult(separator + dumped(jsonOutcome(shown)));
        separator = ",\n";
    }
    printResult("\n]}\n");
    flushResult();
}

} // namespace NBrenmark
