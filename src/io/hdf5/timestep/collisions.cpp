// Collisions: a group for each family, and the same record form inside each contact family.

#include "io/hdf5/hdf5_reader.h"
#include "io/hdf5/hdf5_writer.h"

#include "core/emptied.h"
#include "io/hdf5/common_length.h"
#include "io/hdf5/stored_length.h"
#include "io/hdf5/timestep/family_rows.h"
#include "results/row_bytes.h"

namespace NBrenmark {

// ---------------------------------------------------------------- one family

template <class TForm, class TEnd>
static void endForm(TForm& f, TEnd& end, quint32 fields)
{
    const auto has = [fields](quint32 field) { return (fields & field) != 0; };
    f.plainRows("ids", end.ids, has(eEndIds));                                      // of a particle, or of a triangle
    f.plainRows("velocity", end.velocity, has(eEndVelocity));                       // m/s
    f.plainRows("position", end.position, has(eEndPosition));                       // m
    f.plainRows("radius", end.radius, has(eEndRadius));                             // m; no triangle has one
    f.plainRows("angular velocity", end.angularVelocity, has(eEndAngularVelocity)); // rad/s
    f.plainRows("orientation", end.orientation, has(eEndOrientation));              // w, x, y, z
}

/// \param fields  ECollisionField: what the file holds
template <class TForm, class TCollisions>
static void recordsForm(TForm& f, TCollisions& c, quint32 fields)
{
    const auto has = [fields](quint32 field) { return (fields & field) != 0; };
    f.rows("ids", c.ids, has(eCollisionIds));                                                      // 0: no collision
    f.rows("start time", c.startTime, has(eCollisionStartTime));                                   // s
    f.rows("position", c.position, has(eCollisionPosition));                                       // m
    f.rows("max normal force", c.maxNormalForce, has(eCollisionMaxNormalForce));                   // N
    f.rows("max tangential force", c.maxTangentialForce, has(eCollisionMaxTangentialForce));       // N
    f.rows("unitcp vector", c.unitCpVector, has(eCollisionUnitCpVector));                          // of length 1
    f.rows("relative velocity", c.relativeVelocity, has(eCollisionRelativeVelocity));              // m/s
    f.rows("end time", c.endTime, has(eCollisionEndTime));                                         // s
    f.rows("number iterations", c.iterations, has(eCollisionIterations));                          // time steps
    f.rows("normal energy", c.normalEnergy, has(eCollisionNormalEnergy));                          // J
    f.rows("shear energy", c.shearEnergy, has(eCollisionShearEnergy));                             // J
    f.rows("total normal force", c.totalNormalForce, has(eCollisionTotalNormalForce));             // N
    f.rows("total tangential force", c.totalTangentialForce, has(eCollisionTotalTangentialForce)); // N
    f.group("first", [&] { endForm(f, c.first, fields); });
    f.group("second", [&] { endForm(f, c.second, fields >> secondEndShift); });
}

static quint32 commonLength(const CCollisionsBase& collisions, quint32 fields)
{
    CCommonLength lengths("The collisions");
    recordsForm(lengths, collisions, fields);
    return lengths.common();
}

void CHdf5TimestepDataReader::readCollisionsBase(CCollisionsBase& collisions)
{
    collisions.clear();
    CEmptiedUnlessWhole<CCollisionsBase> reading(collisions);
    quint32 size = 0;
    in().attribute("size", size); // what is announced; the arrays have the last word
    const bool isWanted = (options.timestepMask & collisions.familyMask()) != 0;
    if (!isWanted || (size == 0 && !in().hasRows({"ids", "position"})))
        return;
    quint32 fields = 0;
    in().attribute("mask", fields); // ECollisionField
    CStoredLength lengths(in(), "The collisions have");
    recordsForm(lengths, collisions, fields);
    const quint32 held = lengths.admitted(collisionRowBytes);
    recordsForm(in(), collisions, fields);
    reportIfOther("collisions", size, held);
    collisions.settle(held, fields, NLogTitle::hdf5Read);
    reading.whole = true;
}

void CHdf5TimestepDataWriter::writeCollisionsBase(const CCollisionsBase& collisions)
{
    const quint32 size = (options.timestepMask & collisions.familyMask()) != 0 ? collisions.recordCount() : 0;
    out().attribute("size", size); // 0 where the masks leave the rows out
    if (size == 0)
        return;
    commonLength(collisions, collisions.mask);
    out().attribute("mask", collisions.mask); // ECollisionField
    recordsForm(out(), collisions, collisions.mask);
}

// ---------------------------------------------------------------- both

template <class TForm, class TCollisions, class TVisit>
static void collisionsForm(TForm& f, TCollisions& collisions, TVisit&& visit)
{
    f.group("Collisions/", [&] {
        f.group("SurfaceSurface/", [&] { visit(collisions.surfaceSurface); });
        f.group("SurfaceGeometry/", [&] { visit(collisions.surfaceGeometry); });
    });
}

void CHdf5TimestepDataReader::readCollisions(CCollisions& collisions)
{
    collisionsForm(in(), collisions, [this](auto& family) { family.read(*this); });
}

void CHdf5TimestepDataWriter::writeCollisions(const CCollisions& collisions)
{
    collisionsForm(out(), collisions, [this](const auto& family) { family.write(*this); });
}

} // namespace NBrenmark
