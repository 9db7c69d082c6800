#pragma once
// What would stop a conversion is looked for before anything is written.

#include <QString>

namespace NBrenmark {

/// Whether OUT can become a deck at all: no device, no name or path too long, a folder that can be written.
/// \param out  as the user named it
/// \throws CFailure
void requirePossibleTarget(const QString& out, const QString& target);

/// Whether there is room for the new deck: refuses where there is surely too little, and warns where there is less than
/// the source takes, which is what most decks need.
/// \param there       bytes of it that are there already
/// \param timesteps   each takes a file
/// \throws CFailure
void requireRoom(const QString& target, qint64 sourceBytes, qint64 there, quint32 timesteps);

/// Sees to it that a conversion overwrites nothing that it shouldn't: neither a file of the source,
/// by whatever path, link or spelling, nor without force an existing deck, nor ever what is no deck's.
/// \throws CFailure
void requireFreeTarget(const QString& source, const QString& target, bool force);

/// Makes the folder of a new deck, with those above it, where it is missing.
/// \throws CFailure
void makeTargetFolder(const QString& target);

} // namespace NBrenmark
