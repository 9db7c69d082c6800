// Hands an account to the visitors.
#include "model/factories/factory_accounting.h"

#include "visitors/file_visitor_reader.h"
#include "visitors/file_visitor_writer.h"

namespace NBrenmark {

void CFactoryAccounting::read(IFileVisitorReader& v) { v.readFactoryAccounting(*this); }

void CFactoryAccounting::write(IFileVisitorWriter& v) const { v.writeFactoryAccounting(*this); }

void CFactoryAccounting::startRate()
{
    massSinceRateChange = 0.0;
    massRemainder = 0.0;
}

} // namespace NBrenmark
