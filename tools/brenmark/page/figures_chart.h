#pragma once
// Curves over the timesteps of a source and of its new deck, one drawn over the other.

#include "brenmark/json_text.h"

#include <string>

namespace NBrenmark {

/// Charts as SVG: numbers of particles, their sizes, energies where there are some, bytes of the timesteps.
/// \param source, target  a row a timestep: time, s; particles; smallest, mean and largest size, m; bytes; kinetic and
///                        potential energy, J, which older journals don't have
std::string figureCharts(const Json& source, const Json& target);

} // namespace NBrenmark
