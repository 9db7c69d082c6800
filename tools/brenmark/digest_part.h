#pragma once
// The digest of some timesteps of a deck, on its way from the process that read them to the one that compares.

#include "brenmark/deck_digest.h"

#include <QString>

#include <vector>

namespace NBrenmark {

/// Reads parts of a deck as its files are put there. Each line of standard input is the number of a timestep: those from it
/// on are read, and their digest is in digestFileOfPart when that is there.
/// \throws CFailure  a timestep can't be read, there is something to say of one, or the file can't be written
void writeDigestParts(const QString& deck);
QString digestFileOfPart(const QString& deck, quint32 first);
/// \throws CFailure  the file can't be read, or isn't whole
SDigestPart readDigestPart(const QString& file);

} // namespace NBrenmark
