#pragma once
// The particles of a timestep: the visitor's slot of their types is that of the definitions.

#include "xml/serialisers.h"

namespace NBrenmark {

void writeParticles(CXmlOutput& out, const CParticleTypes& types, bool withProperties);

} // namespace NBrenmark
