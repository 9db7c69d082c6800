// Bonds: a group for each family.

#include "io/hdf5/hdf5_reader.h"
#include "io/hdf5/hdf5_writer.h"

#include "io/hdf5/counted.h"
#include "results/bonds.h"

namespace NBrenmark {

// ---------------------------------------------------------------- one family

/// Bonds are read whatever the masks of the reader say.
void CHdf5TimestepDataReader::readBondsBase(CBondsBase&)
{
    quint32 size = 0;
    in().attribute("size", size);
    refuseAny(size, "bond", "bonds");
}

void CHdf5TimestepDataWriter::writeBondsBase(const CBondsBase& bonds)
{
    const quint32 size = (options.timestepMask & eBondRows) != 0 ? bonds.rowCount() : 0;
    refuseAny(size, "bond", "bonds");
    out().attribute("size", size);
}

// ---------------------------------------------------------------- both

template <class TForm, class TBonds, class TVisit>
static void bondsForm(TForm& f, TBonds& bonds, TVisit&& visit)
{
    f.group("Bonds/", [&] {
        f.group("SurfaceSurface/", [&] { visit(bonds.surfaceSurface); });
        f.group("SurfaceGeometry/", [&] { visit(bonds.surfaceGeometry); });
    });
}

void CHdf5TimestepDataReader::readBonds(CBonds& bonds)
{
    bondsForm(in(), bonds, [this](auto& family) { family.read(*this); });
}

void CHdf5TimestepDataWriter::writeBonds(const CBonds& bonds)
{
    bondsForm(out(), bonds, [this](const auto& family) { family.write(*this); });
}

} // namespace NBrenmark
