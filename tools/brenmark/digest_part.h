#pragma once
// The digest of some timesteps of a deck, on its way from the process that read them to the one that compares.

#include "brenmark/deck_digest.h"

#include <QString>

#include <vector>

namespace NBrenmark {

/// Reads the timesteps of a deck from one on, and writes their digest to a file, for readDigestPart.
/// \throws CFailure  a timestep can't be read, there is something to say of one, or the file can't be written
void writeDigestPart(const QString& deck, quint32 first, const QString& file);
/// \throws CFailure  the file can't be read, or isn't whole
SDigestPart readDigestPart(const QString& file);

} // namespace NBrenmark
