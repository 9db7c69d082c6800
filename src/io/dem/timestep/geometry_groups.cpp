// What changes with time of the geometry. The list itself is in the creator block; each of its
// groups follows in place.
#include "model/geometry_groups.h"

#include "core/log.h"
#include "core/shortened.h"
#include "core/stop_flag.h"
#include "io/dem/custom_properties.h"
#include "io/dem/dem_reader.h"
#include "io/dem/dem_writer.h"
#include "io/dem/geometry_forms.h"
#include "model/factories/particle_factory_list.h"

namespace NBrenmark {

// ---------------------------------------------------------------- the motion of a moving group

/// After the transform: where the group is.
template <class TForm, class TGroup>
static void placeForm(TForm& f, TGroup& group)
{
    f.point(group.translation, from(25, 0, 3), C3DVector());                           // m
    f.point(group.centreOfMass, from(24, 0, 29), group.centreOfMass);                  // m
    f.point(group.originalCentreOfMass, from(25, 0, 0), group.originalCentreOfMass);   // m, before it moved
    f.point(group.pointOfAction, from(25, 0, 2), group.pointOfAction);                 // m
    f.point(group.originalPointOfAction, from(25, 0, 2), group.originalPointOfAction); // m, before it moved
}

static void readMotion(CDemTimestepDataReader& reader, CInForm& f, CGeometryGroup& group)
{
    if (f.since(20, 0, 19)) {
        f.flag(group.resetVelocities);
        f.point(group.velocity); // m/s
        group.motionHistory.read(reader);
    }
    C3DTransform transform;
    reader.readMatrix4(transform); // from the mesh as it was made to where it is now
    placeForm(f, group);
    group.moveTo(transform);
}

static void writeMotion(CDemTimestepDataWriter& writer, COutForm& f, const CGeometryGroup& group)
{
    f.flag(group.resetVelocities);
    f.point(group.velocity); // m/s
    group.motionHistory.write(writer);
    writer.writeMatrix4(group.transform); // from the mesh as it was made to where it is now
    placeForm(f, group);
}

// ---------------------------------------------------------------- triangles

/// Whether a mask names any array. Without one there is no group of arrays either.
static bool hasArrays(quint32 mask)
{
    return (mask & (eTriangleIds | eTriangleNodes | eTriangleForces | eTriangleCharges)) != 0;
}

/// Takes what the file has of the triangles; what it doesn't have of their forces is zero, never what
/// another timestep left behind.
static void takeTriangles(CGeometryGroup& group, STriangleRows& rows)
{
    if (!rows.ids.empty())
        group.triangleIds.swap(rows.ids);
    const bool isNewMesh = !rows.nodes.empty() && rows.nodes != group.triangleNodes;
    if (isNewMesh)
        group.triangleNodes.swap(rows.nodes);
    rows.forces.resize(group.triangleNodes.size());
    group.triangleForces.swap(rows.forces);
    if (!rows.charges.empty())
        group.electrostatic.charges.swap(rows.charges);
    if (isNewMesh)
        group.recomputeDerivedData();
}

static void readTriangles(CInForm& f, CGeometryGroup& group)
{
    if (f.stores(upTo(20, 0, 14)))
        group.dataMask = eTriangleIds | eTriangleNodes | eTriangleForces;
    if (!f.since(20, 0, 16)) // from 20.0.10 to here a timestep has nothing of the triangles
        return;
    f.f64(group.time, from(20, 0, 21), group.time); // s
    quint32 count = 0;
    bool deflated = false;
    f.i32(count);
    f.flag8(deflated);
    f.i32(group.dataMask); // ETriangleField
    STriangleRows rows;
    if (count != 0 && hasArrays(group.dataMask))
        f.group(deflated, count, [&](CArrayGroupReader& arrays) {
            triangleForm(arrays, group.dataMask, rows.ids, rows.nodes, rows.forces, rows.charges);
        });
    if (count != 0 && count != group.triangleNodes.size()) {
        report(eLost, NLogTitle::legacyRead,
               "data of " + counted(count, "triangle") + " for geometry group \"" + shortened(group.name) + "\" of " +
                   std::to_string(group.triangleNodes.size()) + " dropped",
               count, shortened(group.name));
        rows = STriangleRows();
    }
    takeTriangles(group, rows);
}

static void writeTriangles(COutForm& f, const CGeometryGroup& group)
{
    const SSaveOptions& options = f.stream.options;
    const quint32 count =
        (options.timestepMask & eTriangleRows) != 0 ? static_cast<quint32>(group.triangleNodes.size()) : 0;
    const quint32 mask = (options.geometryMask & eGeometryForces) != 0 ? quint32(eTriangleForces) : 0;
    const bool deflated = compressArrays() && count >= leastDeflatedRows;
    f.f64(group.time); // s
    f.i32(count);
    f.flag8(deflated);
    f.i32(mask); // ETriangleField
    if (count != 0 && mask != 0)
        f.group(deflated, count, [&](CArrayGroupWriter& arrays) {
            triangleForm(arrays, mask, group.triangleIds, group.triangleNodes, group.triangleForces,
                         group.electrostatic.charges);
        });
}

// ---------------------------------------------------------------- a group

void CDemTimestepDataReader::readGeometryGroup(CGeometryGroup& group)
{
    CInForm f = in();
    bool isStatic = true;
    f.flag8(isStatic); // never moved so far
    if (isStatic)
        group.standStill();
    else
        readMotion(*this, f, group);
    readTriangles(f, group);
    group.kinematics.read(*this);
    group.customProperties.resetToInitialValues(static_cast<unsigned int>(group.triangleNodes.size()));
    if (f.since(23, 0, 0))
        group.customProperties.read(*this);
    if (f.since(20, 0, 12)) // before, no state of factories is stored
        group.factories->read(*this);
}

void CDemTimestepDataWriter::writeGeometryGroup(const CGeometryGroup& group)
{
    COutForm f = out();
    f.flag8(group.isStatic); // never moved so far
    if (!group.isStatic)
        writeMotion(*this, f, group);
    writeTriangles(f, group);
    group.kinematics.write(*this);
    if ((f.stream.options.geometryMask & eGeometryProperties) != 0)
        group.customProperties.write(*this);
    else
        writeNoCustomProperties(f);
    group.factories->write(*this);
}

// Not by the groups' own read and write: a shape stores nothing in a timestep, and says so by an empty slot.

void CDemTimestepDataReader::readGeometryGroups(GeometryGroups& groups)
{
    bool hasNewIds = false;
    for (CGeometryGroup* group : groups.groups()) {
        if (group == nullptr)
            continue;
        leaveIfStopped();
        readGeometryGroup(*group);
        hasNewIds |= (group->dataMask & (eTriangleIds | eTriangleNodes)) != 0;
    }
    groups.settleState(hasNewIds);
}

void CDemTimestepDataWriter::writeGeometryGroups(const GeometryGroups& groups)
{
    for (const CGeometryGroup* group : groups.groups())
        if (group != nullptr)
            writeGeometryGroup(*group);
}

} // namespace NBrenmark
