// Hands the six numbers to the visitors.
#include "model/geometry/moment_of_inertia.h"

#include "visitors/file_visitor_reader.h"
#include "visitors/file_visitor_writer.h"

namespace NBrenmark {

void CMomentOfInertia::read(IFileVisitorReader& v) { v.readMomentOfInertia(*this); }

void CMomentOfInertia::write(IFileVisitorWriter& v) const { v.writeMomentOfInertia(*this); }

} // namespace NBrenmark
