#pragma once
// What the definition of a deck says of the state of its geometry. That state lies on the objects that timesteps
// change: it is kept apart, so that what a timestep doesn't store never comes from the timestep read before it.

#include "maths/transform.h"
#include "model/bounding_box.h"

#include <any>
#include <vector>

namespace NBrenmark {

class CGeometryGroup;
class GeometryGroups;

/// The state of one group, its motions and its factories.
class CGeometryState
{
public:
    explicit CGeometryState(const CGeometryGroup& group);

    /// Gives the group this state. Only what every timestep stores, where a moving group is, stays as it is.
    void restore(CGeometryGroup& group) const;
    /// Exchanges it with that of the group; what follows from the mesh stays.
    void exchange(CGeometryGroup& group);

private:
    using Fields = std::vector<std::any>;

    Fields body;
    Fields properties;
    Fields motions;
    Fields factories;

    // Where the group is.
    bool isStatic;
    C3DTransform transform;
    CBoundingBox bounds;
    double enclosedMagnitude;
    double surfaceMagnitude;
    std::vector<C3DPoint> movedCoords; ///< while a moving group shows a static state
};

/// While it lives, all groups have the state of the definition.
class COwnGeometryState
{
public:
    explicit COwnGeometryState(GeometryGroups& groups);
    ~COwnGeometryState();
    COwnGeometryState(const COwnGeometryState&) = delete;
    COwnGeometryState& operator=(const COwnGeometryState&) = delete;

private:
    GeometryGroups& groups;
};

} // namespace NBrenmark
