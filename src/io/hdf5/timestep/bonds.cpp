// Bonds: a group for each family.

#include "io/hdf5/hdf5_reader.h"
#include "io/hdf5/hdf5_writer.h"

#include "core/emptied.h"
#include "io/hdf5/common_length.h"
#include "io/hdf5/stored_length.h"
#include "io/hdf5/timestep/family_rows.h"
#include "results/bonds.h"

namespace NBrenmark {

// ---------------------------------------------------------------- one family

template <class TForm, class TBonds>
static void rowsForm(TForm& f, TBonds& b)
{
    f.rows("bonds", b.rows);                         // positions in types and meshes, not ids
    f.rows("normal force", b.normalForce);           // N
    f.rows("tangential force", b.tangentialForce);   // N
    f.rows("normal torque", b.normalTorque);         // N m
    f.rows("tangential torque", b.tangentialTorque); // N m
    f.rows("state", b.state);                        // 0 broken, 1 intact, 2 to be dropped
    f.rows("break time", b.breakTime);               // s
}

static quint32 commonLength(const CBondsBase& bonds)
{
    CCommonLength lengths("The bonds");
    rowsForm(lengths, bonds);
    return lengths.common();
}

/// Bonds are read whatever the masks of the reader say.
void CHdf5TimestepDataReader::readBondsBase(CBondsBase& bonds)
{
    bonds.clear();
    CEmptiedUnlessWhole<CBondsBase> reading(bonds);
    quint32 size = 0;
    in().attribute("size", size); // what is announced; the arrays have the last word
    if (size == 0 && !in().hasRows({"bonds"}))
        return;
    CStoredLength lengths(in(), "The bonds have");
    rowsForm(lengths, bonds);
    const quint32 held = lengths.admitted(0);
    in().together([&](CHdf5RowsReader& f) { rowsForm(f, bonds); });
    reportIfOther("bonds", size, held);
    bonds.resizeRows(held); // what isn't stored: the parameters
    reading.whole = true;
}

void CHdf5TimestepDataWriter::writeBondsBase(CBondsBase& bonds)
{
    bonds.compact();
    const quint32 size = (options.timestepMask & eBondRows) != 0 ? bonds.rowCount() : 0;
    out().attribute("size", size); // 0 where the masks leave the rows out
    if (size == 0)
        return;
    commonLength(bonds);
    rowsForm(out(), bonds);
}

// ---------------------------------------------------------------- both

template <class TForm, class TVisit>
static void bondsForm(TForm& f, CBonds& bonds, TVisit&& visit)
{
    f.group("Bonds/", [&] {
        f.group("SurfaceSurface/", [&] { visit(bonds.surfaceSurface); });
        f.group("SurfaceGeometry/", [&] { visit(bonds.surfaceGeometry); });
    });
}

void CHdf5TimestepDataReader::readBonds(CBonds& bonds)
{
    bondsForm(in(), bonds, [this](CBondsBase& family) { family.read(*this); });
}

void CHdf5TimestepDataWriter::writeBonds(CBonds& bonds)
{
    bondsForm(out(), bonds, [this](CBondsBase& family) { family.write(*this); });
}

} // namespace NBrenmark
