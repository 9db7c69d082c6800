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
    out.array("normalForce", b.normalForce);           // N
    out.array("tangentialForce", b.tangentialForce);   // N
    out.array("normalTorque", b.normalTorque);         // N m
    out.array("tangentialTorque", b.tangentialTorque); // N m
    out.array("state", b.state);                       // EBondState
    out.array("breakTime", b.breakTime);               // s
}

} // namespace NBrenmark
