// Collisions: a group for each family, and the same record form inside each contact family.

#include "io/hdf5/hdf5_reader.h"
#include "io/hdf5/hdf5_writer.h"

#include "io/hdf5/counted.h"
#include "results/collisions.h"

namespace NBrenmark {

// ---------------------------------------------------------------- one family

void CHdf5TimestepDataReader::readCollisionsBase(CCollisionsBase& collisions)
{
    collisions.clear();
    quint32 size = 0;
    in().attribute("size", size);
    if ((options.timestepMask & collisions.familyMask()) != 0)
        refuseAny(size, "collision", "collisions");
}

void CHdf5TimestepDataWriter::writeCollisionsBase(const CCollisionsBase& collisions)
{
    const quint32 size = (options.timestepMask & collisions.familyMask()) != 0 ? collisions.recordCount() : 0;
    refuseAny(size, "collision", "collisions");
    out().attribute("size", size);
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
