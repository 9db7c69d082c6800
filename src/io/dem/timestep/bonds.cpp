// Bonds. Families with rows are refused; empty ones have their place.
#include "results/bonds.h"

#include "io/dem/dem_reader.h"
#include "io/dem/dem_writer.h"

namespace NBrenmark {

void CDemTimestepDataReader::readBondsBase(CBondsBase&)
{
    CInForm f = in();
    bool deflated = false;
    const quint32 count = f.count("bond", 0);
    f.flag8(deflated);
    if (count > 0)
        throw not_carried_error(counted(count, "bond"));
    f.group(deflated, 0, [](CArrayGroupReader&) {});
}

void CDemTimestepDataWriter::writeBondsBase(const CBondsBase& family)
{
    COutForm f = out();
    f.i32(family.rowCount());
    f.flag8(false);
}

void CDemTimestepDataReader::readBonds(CBonds& bonds)
{
    in().block(eBondsBlock, "bonds", [&] {
        bonds.surfaceSurface.read(*this);
        bonds.surfaceGeometry.read(*this);
    });
}

void CDemTimestepDataWriter::writeBonds(const CBonds& bonds)
{
    out().block(eBondsBlock, "bonds", [&] {
        bonds.surfaceSurface.write(*this);
        bonds.surfaceGeometry.write(*this);
    });
}

} // namespace NBrenmark
