#pragma once
// Geometry that a selection keeps for itself. The legacy family has its stored form, so it is at the family's
// door (io/dem/own_geometry.cpp).

#include <memory>

namespace NBrenmark {

class CVersionedStream;
class GeometryGroups;

/// Groups in the form of creator data, bound to no properties of the deck.
/// \throws std::exception  what follows isn't geometry
std::shared_ptr<GeometryGroups> readOwnGeometry(CVersionedStream& stream);
void writeOwnGeometry(CVersionedStream& stream, const GeometryGroups& groups);

} // namespace NBrenmark
