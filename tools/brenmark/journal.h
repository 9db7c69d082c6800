#pragma once
// What is known of a conversion that isn't finished, kept beside what it has made so far.

#include "brenmark/ledger.h"

#include "core/deck/family_files.h"

#include <string>

namespace NBrenmark {

class IDisk;

/// How far a conversion is.
enum EJournalState
{
    eConverting, ///< timesteps or companions are missing
    eComplete,   ///< all of the deck is there and synced
    eReplacing,  ///< what is at the target goes aside
    ePlacing     ///< nothing of an older deck is at the target any more, and the new one comes
};

struct SJournal
{
    EJournalState state = eConverting;
    std::string program; ///< version of the program that writes the deck
    QString source;      ///< as it was named
    FileStates sourceFiles;
    bool ignoresCompanions = false;
    bool replaces = false; ///< an older deck at the target was to be replaced
    quint32 timesteps = 0; ///< of the source
    quint32 finished = 0;  ///< whole, and synced
    Ledger ledger;         ///< up to the last of them
};

/// Puts a journal in the place of the earlier one in a folder: at any time one of them is there whole.
/// \throws CFailure
void writeJournal(IDisk& disk, const std::string& folder, const SJournal& journal);

bool hasJournal(const std::string& folder);
/// \throws CFailure  it can't be read, or another version of the program wrote it in another form
SJournal readJournal(const std::string& folder);

/// Names of the journal, and of the one in the making, in the folder.
extern const char* const journalName;
extern const char* const newJournalName;

} // namespace NBrenmark
