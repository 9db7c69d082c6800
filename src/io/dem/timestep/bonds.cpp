// Bonds.
#include "results/bonds.h"

#include "io/dem/dem_reader.h"
#include "io/dem/dem_writer.h"

namespace NBrenmark {

template <class TArrays, class TBonds>
static void rowsForm(TArrays& arrays, TBonds& b)
{
    arrays.rows("bond ends", b.rows);                      // positions in types and meshes, not ids
    arrays.rows("normal forces", b.normalForce);           // N
    arrays.rows("tangential forces", b.tangentialForce);   // N
    arrays.rows("normal torques", b.normalTorque);         // N m
    arrays.rows("tangential torques", b.tangentialTorque); // N m
    arrays.rows("bond states", b.state);                   // 0 broken, 1 intact, 2 to be dropped
    arrays.rows("break times", b.breakTime);               // s
}

void CDemTimestepDataReader::readBondsBase(CBondsBase& family)
{
    CInForm f = in();
    family.clear();
    bool deflated = false;
    const quint32 count = f.count("bond", 0);
    f.flag8(deflated);
    f.group(deflated, count, [&](CArrayGroupReader& arrays) { rowsForm(arrays, family); });
    family.resizeRows(count); // what isn't stored: the parameters
}

void CDemTimestepDataWriter::writeBondsBase(CBondsBase& family)
{
    family.compact();
    COutForm f = out();
    const quint32 count = (stream->options.timestepMask & eBondRows) != 0 ? family.rowCount() : 0;
    const bool deflated = compressArrays() && count >= leastDeflatedRows;
    f.i32(count);
    f.flag8(deflated);
    if (count > 0)
        f.group(deflated, count, [&](CArrayGroupWriter& arrays) { rowsForm(arrays, family); });
}

void CDemTimestepDataReader::readBonds(CBonds& bonds)
{
    in().families(eBondsBlock, "bonds", *this, bonds.surfaceSurface, bonds.surfaceGeometry);
}

void CDemTimestepDataWriter::writeBonds(CBonds& bonds)
{
    out().block(eBondsBlock, "bonds", [&] {
        bonds.surfaceSurface.write(*this);
        bonds.surfaceGeometry.write(*this);
    });
}

} // namespace NBrenmark
