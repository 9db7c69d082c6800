// Records of contacts' histories.
#include "io/dem/timestep/collision_arrays.h"

#include "core/log.h"
#include "io/dem/dem_reader.h"
#include "io/dem/dem_writer.h"
#include "results/row_bytes.h"

namespace NBrenmark {

/// Nothing stored leaves what there is: nested records may have come with the arrays of their contacts.
void CDemTimestepDataReader::readCollisionsBase(CCollisionsBase& family)
{
    CInForm f = in();
    bool deflated = false;
    quint32 mask = 0;
    const quint32 count = f.count("collision", 0);
    f.flag8(deflated);
    f.i32(mask); // ECollisionField
    if (count == 0)
        return;
    family.clear();
    f.group(
        deflated, count, [&](CArrayGroupReader& arrays) { collisionArraysForm(arrays, mask, family); },
        collisionRowBytes);
    family.settle(count, mask, NLogTitle::legacyRead);
}

void CDemTimestepDataWriter::writeCollisionsBase(const CCollisionsBase& family)
{
    COutForm f = out();
    const quint32 count = (stream->options.timestepMask & family.familyMask()) != 0 ? family.recordCount() : 0;
    const bool deflated = compressArrays() && count >= leastDeflatedRows;
    f.i32(count);
    f.flag8(deflated);
    f.i32(family.mask); // ECollisionField
    if (count > 0)
        f.group(deflated, count, [&](CArrayGroupWriter& arrays) { collisionArraysForm(arrays, family.mask, family); });
}

void CDemTimestepDataReader::readCollisions(CCollisions& collisions)
{
    collisions.clear();
    if (!in().stores(gateContactBlocks))
        return;
    in().families(eCollisionsBlock, "collisions", *this, collisions.surfaceSurface, collisions.surfaceGeometry);
}

void CDemTimestepDataWriter::writeCollisions(const CCollisions& collisions)
{
    out().block(eCollisionsBlock, "collisions", [&] {
        collisions.surfaceSurface.write(*this);
        collisions.surfaceGeometry.write(*this);
    });
}

} // namespace NBrenmark
