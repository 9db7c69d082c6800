// The extra values of old contacts, kept in step with the rows.
#include "results/contact_records.h"

#include "visitors/file_visitor_reader.h"
#include "visitors/file_visitor_writer.h"

namespace NBrenmark {

void SContactRecord::makeValues()
{
    if (kind == eScalarRecord)
        values = Scalars();
    else if (kind == eVectorRecord)
        values = Vectors();
    else
        values = std::monostate();
}

std::size_t SContactRecord::rowCount() const
{
    std::size_t rows = 0;
    withValues([&rows](const auto& array) { rows = array.size(); });
    return rows;
}

void CContactRecordList::read(IFileVisitorReader& v) { v.readContactRecords(*this); }

void CContactRecordList::write(IFileVisitorWriter& v) const { v.writeContactRecords(*this); }

void CContactRecordList::resizeRows(std::size_t count)
{
    for (SContactRecord& record : records)
        record.withValues([count](auto& array) { array.resize(count); });
}

void CContactRecordList::reserveRows(std::size_t count)
{
    for (SContactRecord& record : records)
        record.withValues([count](auto& array) { array.reserve(count); });
}

void CContactRecordList::copyRow(quint32 source, quint32 target)
{
    for (SContactRecord& record : records)
        record.withValues([=](auto& array) { array[target] = array[source]; });
}

} // namespace NBrenmark
