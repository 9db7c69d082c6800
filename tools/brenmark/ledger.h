#pragma once
// The ledger of a read or conversion: every message, of which those with an effect say what happened to the data.

#include "core/log.h"

#include <functional>
#include <string>
#include <vector>

namespace NBrenmark {

using Ledger = std::vector<SLogRecord>;

/// "source", "target", "names", "unsupported", "memory", "internal"; "none".
const char* causeName(ECause cause);

/// Whether anything of the source was lost through damage.
bool holdsDamage(const Ledger& messages);
/// What was lost or defaulted through damage, in one line: "contacts skipped (3 times), ...". Empty for nothing.
std::string damageText(const Ledger& messages);

/// The messages of some kind, one line for the same words, with their number.
std::vector<std::string> linesOf(const Ledger& messages, const std::function<bool(const SLogRecord&)>& wanted);

/// All but the first error: what is reported as the failure isn't reported as a message as well.
Ledger withoutFirstError(Ledger messages);

/// Which messages a command shows: one that only looks changes nothing, whatever a conversion would.
enum EShownMessages
{
    eAllMessages,
    eWithoutUpgrades,
    eEveryMessage ///< each by itself, however many there are
};

/// Reports warnings, and errors that ended nothing, on standard error: one line for the same words, with their number.
void printLedger(const Ledger& messages, EShownMessages shown = eAllMessages);

} // namespace NBrenmark
