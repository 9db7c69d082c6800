// The text of bonds, dropped rows taken out as by every writer.
#include "results/bonds.h"
#include "io/text/text_writer.h"

namespace NBrenmark {

void CTextWriter::writeBonds(CBonds& bonds)
{
    out.group("surfaceSurface", [&] { bonds.surfaceSurface.write(*this); });
    out.group("surfaceGeometry", [&] { bonds.surfaceGeometry.write(*this); });
}

void CTextWriter::writeBondsBase(CBondsBase& b)
{
    b.compact();
    out.value("rows", b.rowCount());
    out.array("ends", b.rows);
    out.array("normalForce", b.normalForce);
    out.array("tangentialForce", b.tangentialForce);
    out.array("normalTorque", b.normalTorque);
    out.array("tangentialTorque", b.tangentialTorque);
    out.array("state", b.state);
    out.array("breakTime", b.breakTime);
}

} // namespace NBrenmark
