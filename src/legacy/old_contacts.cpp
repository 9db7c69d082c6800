// Bonds of timesteps below 20.0.0 hand themselves to the reader, ends first.
#include "legacy/old_contacts.h"

#include "visitors/file_visitor_reader.h"

namespace NBrenmark::NLegacySupport {

void CBond::read(IFileVisitorReader& v) { v.readLegacyBond(*this); }

void CSurfSurfBond::read(IFileVisitorReader& v)
{
    v.readLegacySurfSurfBondIds(*this);
    CBond::read(v);
}

} // namespace NBrenmark::NLegacySupport
