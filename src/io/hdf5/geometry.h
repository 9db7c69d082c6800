#pragma once
// What creator models and timesteps have in common of geometry.

#include "io/hdf5/form.h"

#include "model/geometry/geometry_group.h"

namespace NBrenmark {

/// The arrays of the triangles, as far as the word names them.
/// \param fields  ETriangleField
template <class TForm, class TGroup>
void trianglesForm(TForm& f, TGroup& g, quint32 fields)
{
    f.rows("triangle ids", g.triangleIds, (fields & eTriangleIds) != 0);
    f.rows("triangle nodes", g.triangleNodes, (fields & eTriangleNodes) != 0);
    f.rows("force torque", g.triangleForces, (fields & eTriangleForces) != 0); // N, N m, N
}

/// Where a group's mass lies and where its loads act, now and before it moved.
template <class TForm, class TGroup>
void centresForm(TForm& f, TGroup& g)
{
    f.attribute("centre of mass", g.centreOfMass);                // m
    f.attribute("orig centre of mass", g.originalCentreOfMass);   // m, before it moved
    f.attribute("point of action", g.pointOfAction);              // m
    f.attribute("orig point of action", g.originalPointOfAction); // m, before it moved
}

/// The group of a group's motions, by another name in early decks.
template <class TForm>
std::string kinematicsName(const TForm& f)
{
    return f.since(30, 0, 1) ? "Kinematics/" : "Dynamics/";
}

/// Warns of a group whose file holds a record of forces for another number of triangles.
/// \param examine  it is no remark then: the rows are cut or filled up
void checkForces(const CGeometryGroup& g, bool examine);

} // namespace NBrenmark
