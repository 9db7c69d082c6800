// Hands the link to the visitors.
#include "model/geometry/block_link.h"

#include "visitors/file_visitor_reader.h"
#include "visitors/file_visitor_writer.h"

namespace NBrenmark {

void CBlockLink::read(IFileVisitorReader& v) { v.readBlockLink(*this); }

void CBlockLink::write(IFileVisitorWriter& v) const { v.writeBlockLink(*this); }

} // namespace NBrenmark
