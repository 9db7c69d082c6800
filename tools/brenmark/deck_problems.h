#pragma once
// What keeps a deck that can be opened from being whole.

#include "brenmark/deck_reader.h"

#include <QString>

#include <string>
#include <vector>

namespace NBrenmark {

/// The first segment of a legacy deck that its index names and that isn't there; empty for none.
QString missingSegment(const CDeckReader& reader, const QString& path);

/// A sentence each, without its full stop: files that are missing, that can't be opened or that the header counts
/// otherwise, companions that a deck of the current family has to have, segments of a legacy one.
std::vector<std::string> problemsOf(const CDeckReader& reader, const QString& path);

/// The failure that reports one of them, with what to do about it.
CFailure problemFailure(const std::string& path, EDeckFormat format, const std::string& problem);

/// Whether a whole deck is at the target that has the timesteps of the source: a run that was killed when it had given
/// its deck the final name leaves no other sign.
bool isWholeConversion(const QString& target, const QString& source, size_t timesteps);

} // namespace NBrenmark
