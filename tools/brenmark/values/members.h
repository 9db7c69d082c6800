#pragma once
// Which particles belong to a selection of the deck's settings.

#include "brenmark/deck_reader.h"
#include "brenmark/values/value_sources.h"

#include <string>

namespace NBrenmark {

namespace NSelection {
class CSelection;
}

class CSelectedParticles
{
public:
    /// \throws CFailure  the deck has no such selection, or one that can't be taken apart
    CSelectedParticles(CDeckReader& reader, const std::string& name);

    /// Keeps the rows of the particles that are picked by hand, or whose centres are inside the region.
    /// \param sources  of particles
    /// \throws CFailure  the region can't be known, or the deck holds no positions
    void keepMembers(std::vector<SValueSource>& sources, const SSimulationFrame& frame) const;

private:
    const NSelection::CSelection& selection;
    std::string shownName; ///< with the deck's, for messages
};

} // namespace NBrenmark
