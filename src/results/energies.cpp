// Hands the balance to the visitors.
#include "results/energies.h"

#include "visitors/file_visitor_reader.h"
#include "visitors/file_visitor_writer.h"

namespace NBrenmark {

void CTimestepEnergy::read(IFileVisitorReader& v) { v.readTimestepEnergy(*this); }

void CTimestepEnergy::write(IFileVisitorWriter& v) const { v.writeTimestepEnergy(*this); }

void CSystemEnergy::read(IFileVisitorReader& v) { v.readSystemEnergy(*this); }

void CSystemEnergy::write(IFileVisitorWriter& v) const { v.writeSystemEnergy(*this); }

} // namespace NBrenmark
