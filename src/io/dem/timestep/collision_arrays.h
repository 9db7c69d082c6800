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
    rows(eEndIds, "ids of collision ends", end.ids);                  // of a particle, or of a triangle
    rows(eEndVelocity, "velocities of collision ends", end.velocity); // m/s
    rows(eEndPosition, "positions of collision ends", end.position);  // m
    rows(eEndRadius, "radii of collision ends", end.radius);          // m; no triangle has one
    rows(eEndAngularVelocity, "angular velocities of collision ends", end.angularVelocity); // rad/s
    rows(eEndOrientation, "orientations of collision ends", end.orientation);               // w, x, y, z
}

/// \param fields  ECollisionField: what the file holds
template <class TArrays, class TCollisions>
void collisionArraysForm(TArrays& arrays, quint32 fields, TCollisions& c)
{
    const auto rows = [&](quint32 field, const char* what, auto& array) {
        if ((fields & field) != 0)
            arrays.rows(what, array);
    };
    rows(eCollisionIds, "collision ids", c.ids);                                             // 0: no collision
    rows(eCollisionStartTime, "start times", c.startTime);                                   // s
    rows(eCollisionPosition, "collision positions", c.position);                             // m
    rows(eCollisionMaxNormalForce, "greatest normal forces", c.maxNormalForce);              // N
    rows(eCollisionMaxTangentialForce, "greatest tangential forces", c.maxTangentialForce);  // N
    rows(eCollisionUnitCpVector, "unit vectors", c.unitCpVector);                            // of length 1
    rows(eCollisionRelativeVelocity, "relative velocities", c.relativeVelocity);             // m/s
    rows(eCollisionEndTime, "end times", c.endTime);                                         // s
    rows(eCollisionIterations, "iterations", c.iterations);                                  // time steps
    rows(eCollisionNormalEnergy, "normal energies", c.normalEnergy);                         // J
    rows(eCollisionShearEnergy, "shear energies", c.shearEnergy);                            // J
    rows(eCollisionTotalNormalForce, "total normal forces", c.totalNormalForce);             // N
    rows(eCollisionTotalTangentialForce, "total tangential forces", c.totalTangentialForce); // N
    collisionEndForm(arrays, fields, c.first);
    collisionEndForm(arrays, fields >> secondEndShift, c.second);
}

} // namespace NBrenmark
