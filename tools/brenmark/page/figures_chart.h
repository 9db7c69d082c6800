#pragma once
// Curves over the timesteps of a source and of its new deck, one drawn over the other.

#include "brenmark/json_text.h"

#include <string>

namespace NBrenmark {

/// Three charts as SVG: numbers of particles, their sizes, bytes of the timesteps.
/// \param source, target  a row a timestep: time, s; particles; smallest, mean and largest size, m; bytes
std::string figureCharts(const Json& source, const Json& target);

} // namespace NBrenmark
