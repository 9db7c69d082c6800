#pragma once
// Which rows belong to a selection of the deck's settings.

#include "brenmark/deck_reader.h"
#include "brenmark/values/value_sources.h"

#include "maths/vector.h"

#include <string>
#include <vector>

namespace NBrenmark {

namespace NSelection {
class CSelection;
class CGeometricRegionSelection;
class IVolume;
} // namespace NSelection

class CSelectedRows
{
public:
    /// \param name  of a selection, or of the element of a region: "Tower bins:2" is the second bin of "Tower bins"
    /// \throws CFailure  the deck has no such selection, or one that can't be taken apart
    CSelectedRows(CDeckReader& reader, const std::string& name);

    const NSelection::CSelection& selection() const { return chosen; }
    /// Keeps the particles that are picked by hand, or what is inside the region: particles and triangles by their
    /// centres, contacts and collisions by their places.
    /// \throws CFailure  what belongs to it can't be known, or the deck holds no positions
    void keepMembers(std::vector<SValueSource>& sources, SSimulationFrame& frame) const;
    /// Of its region, m^3. \throws CFailure  it has none
    double volume(SSimulationFrame& frame) const;
    /// Of a region, whole; 1 for one of its elements, and for what is no region.
    int elementCount(SSimulationFrame& frame) const;
    /// The element that each member belongs to, from 0, in the order of the sources.
    std::vector<int> elementsOf(const std::vector<SValueSource>& members, SSimulationFrame& frame) const;
    /// m^3; 0 for none
    double elementVolume(int element) const;

private:
    const NSelection::IVolume& placed(SSimulationFrame& frame) const;
    std::vector<C3DPoint> placesOf(const SValueSource& source, SSimulationFrame& frame) const;

    NSelection::CSelection& chosen;
    NSelection::CGeometricRegionSelection* region; ///< that it is, or an element of; null for another
    std::string shownName;                         ///< for messages
};

} // namespace NBrenmark
