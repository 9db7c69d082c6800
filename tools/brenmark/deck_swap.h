#pragma once
// How a finished deck takes the place of an older one, so that at every moment the final name is absent or that of
// a whole deck, old or new, whenever the process is killed or the power goes.
//
// The older deck goes aside, its main file first: without that its other files are no deck. Then the new deck's files
// come, its main file last. Between the steps folders are synced, for a disk may keep renames in another order than
// that of the calls. Which half it is in is what the journal says, so that a later run can finish it.

#include "brenmark/disk.h"

#include <functional>

namespace NBrenmark {

struct SSwapPlaces
{
    std::string folder;  ///< of the target
    std::string partial; ///< of the unfinished conversion, on the same file system
    std::string base;    ///< of both decks: "pile" for pile.dem
};

/// Path of what lies in a folder.
std::string inFolder(const std::string& folder, const std::string& name);

/// Names of a deck's files and of its data folder in a folder, the main file not among them.
std::vector<std::string> deckMembers(const IDisk& disk, const std::string& folder, const std::string& base);

/// The folder for what is replaced, within that of the conversion.
std::string replacedFolder(const SSwapPlaces& places);

/// Both halves begin again where they were broken off. Everything of the new deck is synced before.
void moveOldDeckAside(IDisk& disk, const SSwapPlaces& places);
void moveNewDeckIn(IDisk& disk, const SSwapPlaces& places);

/// Removes the files of a deck and no other, so that its data folder stays if something else lies in it.
void removeDeck(IDisk& disk, const std::string& folder, const std::string& base);

/// The first thing in a deck's data folder that is no file of a deck; empty for none.
std::string strangerIn(const IDisk& disk, const std::string& dataFolder);

} // namespace NBrenmark
