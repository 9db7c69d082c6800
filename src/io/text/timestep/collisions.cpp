#include "results/collisions.h"
#include "io/text/text_writer.h"

namespace NBrenmark {

void CTextWriter::writeCollisions(const CCollisions& collisions)
{
    out.group("surfaceSurface", [&] { collisions.surfaceSurface.write(*this); });
    out.group("surfaceGeometry", [&] { collisions.surfaceGeometry.write(*this); });
}

void CTextWriter::writeCollisionsBase(const CCollisionsBase& family) { out.value("records", family.recordCount()); }

} // namespace NBrenmark
