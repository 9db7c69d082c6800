#pragma once
// Geometry that a selection keeps for itself. The legacy family has its stored form, so it is at the family's
// door (io/dem/own_geometry.cpp).

#include <memory>

class QDataStream;

namespace NBrenmark {

class GeometryGroups;

/// Groups in the form of creator data, bound to no properties of the deck.
/// \throws std::exception  what follows isn't geometry
std::shared_ptr<GeometryGroups> readOwnGeometry(QDataStream& stream);
void writeOwnGeometry(QDataStream& stream, const GeometryGroups& groups);

} // namespace NBrenmark
