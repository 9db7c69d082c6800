#pragma once
// The arrays of collision records, which are in a group of their own or among those of the contacts
// that they belong to.

#include "io/dem/array_group.h"
#include "results/collisions.h"

namespace NBrenmark {

template <class TArrays, class TEnd>
void collisionEndForm(TArrays& arrays, quint32 fields, TEnd& end)
{
    const auto rows = [&](quint32 field, const char* what, auto& array) {
        if ((fields & field) != 0)
            arrays.rows(what, array);
    };
    rows(eEndIds, "ids of collision ends", end.ids);
    rows(eEndVelocity, "velocities of collision ends", end.velocity);
    rows(eEndPosition, "positions of collision ends", end.position);
    rows(eEndRadius, "radii of collision ends", end.radius);
    rows(eEndAngularVelocity, "angular velocities of collision ends", end.angularVelocity);
    rows(eEndOrientation, "orientations of collision ends", end.orientation);
}

/// \param fields  ECollisionField: what the file holds
template <class TArrays, class TCollisions>
void collisionArraysForm(TArrays& arrays, quint32 fields, TCollisions& c)
{
    const auto rows = [&](quint32 field, const char* what, auto& array) {
        if ((fields & field) != 0)
            arrays.rows(what, array);
    };
    rows(eCollisionIds, "collision ids", c.ids);
    rows(eCollisionStartTime, "start times", c.startTime);
    rows(eCollisionPosition, "collision positions", c.position);
    rows(eCollisionMaxNormalForce, "greatest normal forces", c.maxNormalForce);
    rows(eCollisionMaxTangentialForce, "greatest tangential forces", c.maxTangentialForce);
    rows(eCollisionUnitCpVector, "unit vectors", c.unitCpVector);
    rows(eCollisionRelativeVelocity, "relative velocities", c.relativeVelocity);
    rows(eCollisionEndTime, "end times", c.endTime);
    rows(eCollisionIterations, "iterations", c.iterations);
    rows(eCollisionNormalEnergy, "normal energies", c.normalEnergy);
    rows(eCollisionShearEnergy, "shear energies", c.shearEnergy);
    rows(eCollisionTotalNormalForce, "total normal forces", c.totalNormalForce);
    rows(eCollisionTotalTangentialForce, "total tangential forces", c.totalTangentialForce);
    collisionEndForm(arrays, fields, c.first);
    collisionEndForm(arrays, fields >> secondEndShift, c.second);
}

} // namespace NBrenmark
