#include "results/bonds.h"
#include "io/text/text_writer.h"

namespace NBrenmark {

void CTextWriter::writeBonds(const CBonds& bonds)
{
    out.group("surfaceSurface", [&] { bonds.surfaceSurface.write(*this); });
    out.group("surfaceGeometry", [&] { bonds.surfaceGeometry.write(*this); });
}

void CTextWriter::writeBondsBase(const CBondsBase& family) { out.value("rows", family.rowCount()); }

} // namespace NBrenmark
