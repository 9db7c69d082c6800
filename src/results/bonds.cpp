#include "results/bonds.h"

#include "visitors/file_visitor_reader.h"
#include "visitors/file_visitor_writer.h"

namespace NBrenmark {

void CBondsBase::read(IFileVisitorReader& v) { v.readBondsBase(*this); }

void CBondsBase::write(IFileVisitorWriter& v) const { v.writeBondsBase(*this); }

void CBonds::read(IFileVisitorReader& v) { v.readBonds(*this); }

void CBonds::write(IFileVisitorWriter& v) const { v.writeBonds(*this); }

} // namespace NBrenmark
