#include "brenmark/ledger.h"

#include "brenmark/failure.h"
#include "brenmark/terminal.h"

#include "core/first_failure.h"
#include "core/log_titles.h"

#include <algorithm>
#include <array>
#include <map>
#include <string_view>
#include <tuple>

namespace NBrenmark {

constexpr size_t mostLines = 20; // more would bury the result

namespace {

/// Messages of the same words, wherever in the deck.
struct SSameWords
{
    const SLogRecord* first;
    quint64 times = 0;
};

/// In the order of their first coming. A damaged deck may have as many kinds of messages as it has bytes.
template <class TWanted>
std::vector<SSameWords> grouped(const Ledger& messages, TWanted&& wanted, bool isEachByItself = false)
{
    std::vector<SSameWords> groups;
    std::map<std::tuple<ELogLevel, std::string_view, std::string_view>, size_t> known;
    for (const SLogRecord& message : messages) {
        if (!wanted(message))
            continue;
        const auto [group, isNew] = known.emplace(
            std::tuple(message.level, std::string_view(message.title), std::string_view(message.text)), groups.size());
        if (isNew || isEachByItself)
            groups.push_back({&message, 1});
        else
            ++groups[group->second].times;
    }
    return groups;
}

std::string timesText(quint64 times) { return times > 1 ? " (" + std::to_string(times) + " times)" : std::string(); }

} // namespace

const char* causeName(ECause cause)
{
    static constexpr std::array names{"none", "source", "target", "names", "unsupported", "memory", "internal"};
    return names[cause];
}

bool holdsDamage(const Ledger& messages)
{
    return std::any_of(messages.begin(), messages.end(),
                       [](const SLogRecord& message) { return isDamage(message.effect); });
}

std::vector<std::string> linesOf(const Ledger& messages, const std::function<bool(const SLogRecord&)>& wanted)
{
    std::vector<std::string> lines;
    for (const SSameWords& group : grouped(messages, wanted))
        lines.push_back(indented(withoutEnd(group.first->placedText()) + timesText(group.times)));
    return lines;
}

std::string damageText(const Ledger& messages)
{
    constexpr size_t mostKinds = 5;
    const std::vector<SSameWords> groups =
        grouped(messages, [](const SLogRecord& message) { return isDamage(message.effect); });
    std::string text;
    for (size_t i = 0; i < std::min(groups.size(), mostKinds); ++i)
        text += (i > 0 ? "; " : "") + withoutEnd(groups[i].first->placedText()) + timesText(groups[i].times);
    if (groups.size() > mostKinds)
        text += "; and " + std::to_string(groups.size() - mostKinds) + " more kinds";
    return indented(text);
}

Ledger withoutFirstError(Ledger messages)
{
    if (const SLogRecord* const error = firstFailure(messages))
        messages.erase(messages.begin() + (error - messages.data()));
    return messages;
}

void printLedger(const Ledger& messages, EShownMessages shown)
{
    const auto isShown = [shown](const SLogRecord& message) {
        const bool isOfUpgrade = message.effect == eUpgraded || message.title == NLogTitle::conversionProblem.text;
        return message.level >= eWarning && (shown != eWithoutUpgrades || !isOfUpgrade);
    };
    const std::vector<SSameWords> groups = grouped(messages, isShown, shown == eEveryMessage);
    const size_t lines = shown == eEveryMessage ? groups.size() : std::min(groups.size(), mostLines);
    for (size_t i = 0; i < lines; ++i) {
        const SLogRecord& message = *groups[i].first;
        const bool isError = message.level == eError;
        const std::string word = isError ? "error:" : "warning:";
        const std::string text = indented(withoutEnd(message.placedText())) + timesText(groups[i].times);
        const bool isSentence = !text.empty() && text.back() == '!';
        printSequences("brenmark: " + coloured(word, isError ? "31" : "33") +
                       safeText(' ' + message.title + ": " + text + (isSentence ? "\n" : ".\n")));
    }
    if (groups.size() > lines)
        printError("brenmark: " + std::to_string(groups.size() - lines) +
                   " more messages of other kinds; --json lists all.\n");
}

} // namespace NBrenmark
