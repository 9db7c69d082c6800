#pragma once
// What is derived from a mesh takes memory beside the arrays that a file holds.

#include "model/geometry/geometry_group.h"

namespace NBrenmark {

/// Bytes that a group takes beside its stored arrays: where its vertices are now, and of its triangles centres, normals,
/// areas and loads, and the tables that find both by their ids.
inline quint64 derivedMeshBytes(const CGeometryGroup& group)
{
    constexpr quint64 tables = 4 * sizeof(quint32);
    constexpr quint64 ofVertex = sizeof(C3DPoint) + sizeof(quint32) + tables;
    constexpr quint64 ofTriangle =
        sizeof(C3DPoint) + sizeof(C3DVector) + 2 * sizeof(double) + sizeof(ForceTorque) + tables;
    const quint64 vertices = std::max(group.coords.size(), group.originalCoords.size());
    return vertices * ofVertex + group.triangleNodes.size() * ofTriangle;
}

} // namespace NBrenmark
