// The simulation box.
#include "model/domain.h"

#include "io/dem/dem_reader.h"
#include "io/dem/dem_writer.h"

namespace NBrenmark {

template <class TForm, class TDomain>
static void domainForm(TForm&& f, TDomain& domain)
{
    f.point(domain.min);      // m
    f.point(domain.max);      // m
    f.flag(domain.periodicX); // what leaves comes in on the other side
    f.flag(domain.periodicY);
    f.flag(domain.periodicZ);
}
void CDemCreatorDataReader::readDomain(CDomain& domain) { domainForm(in(), domain); }
void CDemCreatorDataWriter::writeDomain(const CDomain& domain) { domainForm(out(), domain); }

} // namespace NBrenmark
