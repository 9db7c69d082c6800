#include "results/collisions.h"

#include "visitors/file_visitor_reader.h"
#include "visitors/file_visitor_writer.h"

namespace NBrenmark {

void CCollisionsBase::read(IFileVisitorReader& v) { v.readCollisionsBase(*this); }

void CCollisionsBase::write(IFileVisitorWriter& v) const { v.writeCollisionsBase(*this); }

void CCollisions::read(IFileVisitorReader& v) { v.readCollisions(*this); }

void CCollisions::write(IFileVisitorWriter& v) const { v.writeCollisions(*this); }

void CCollisions::clear()
{
    surfaceSurface.clear();
    surfaceGeometry.clear();
}

} // namespace NBrenmark
