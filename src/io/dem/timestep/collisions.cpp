// Records of contacts' histories. Families with records are refused; empty ones have their place.
#include "results/collisions.h"

#include "io/dem/dem_reader.h"
#include "io/dem/dem_writer.h"

namespace NBrenmark {

void CDemTimestepDataReader::readCollisionsBase(CCollisionsBase&)
{
    CInForm f = in();
    bool deflated = false;
    const quint32 count = f.count("collision", 0);
    f.flag8(deflated);
    f.dropI32(); // the mask of the arrays, of which there are none
    if (count > 0)
        throw not_carried_error(counted(count, "collision"));
}

void CDemTimestepDataWriter::writeCollisionsBase(const CCollisionsBase& family)
{
    COutForm f = out();
    f.i32(family.recordCount());
    f.flag8(false);
    f.i32(family.mask);
}

void CDemTimestepDataReader::readCollisions(CCollisions& collisions)
{
    if (!in().stores(gateContactBlocks))
        return;
    in().block(eCollisionsBlock, "collisions", [&] {
        collisions.surfaceSurface.read(*this);
        collisions.surfaceGeometry.read(*this);
    });
}

void CDemTimestepDataWriter::writeCollisions(const CCollisions& collisions)
{
    out().block(eCollisionsBlock, "collisions", [&] {
        collisions.surfaceSurface.write(*this);
        collisions.surfaceGeometry.write(*this);
    });
}

} // namespace NBrenmark
