#pragma once
// How many bytes of a deck's files each timestep takes: what progress is measured in.

#include "brenmark/deck_reader.h"

#include <vector>

namespace NBrenmark {

/// What is between two timesteps, models for the most part, counts with the earlier one. Never fails: a size that isn't
/// known is 1.
std::vector<double> timestepSizes(const CDeckReader& reader, const QString& path);

} // namespace NBrenmark
