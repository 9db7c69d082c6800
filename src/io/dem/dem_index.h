#pragma once
// The timestep index beside a legacy deck: how the list of saved timesteps is stored.

#include "core/timestep_index.h"

class QIODevice;

namespace NBrenmark {

namespace NDemIndex {

/// Offsets grew from 32 to 64 bits, then the full flag came; entries have one length in a file.
/// \param lastVersion  of the deck's header, by its plain number
qint64 entryBytes(quint32 lastVersion);
/// Whether entries of the version are in the form that is written now.
bool isCurrentForm(quint32 lastVersion);

/// Reads the whole index. \return false if it isn't one of so many timesteps or ends early
bool read(QIODevice& device, quint32 lastVersion, quint32 timesteps, TimestepIndex& index);
/// Writes the count and all entries but those of no data, whose segment and offset are 0.
bool write(QIODevice& device, const TimestepIndex& index);
/// Writes the new count, and one entry after the others.
bool append(QIODevice& device, quint32 count, const STimestepIndexEntry& entry);

} // namespace NDemIndex

} // namespace NBrenmark
