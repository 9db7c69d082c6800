#include "results/contacts.h"
#include "io/text/text_writer.h"

namespace NBrenmark {

void CTextWriter::writeContacts(const CContacts& contacts)
{
    out.group("surfaceSurface", [&] { contacts.surfaceSurface.write(*this); });
    out.group("surfaceGeometry", [&] { contacts.surfaceGeometry.write(*this); });
}

void CTextWriter::writeContactsBase(const CContactsBase& family)
{
    out.value("rows", family.rowCount());
    out.value("collisionsActive", family.collisionsActive);
    out.group("activeCollisions", [&] { family.activeCollisions.write(*this); });
    out.group("contactRecords", [&] { family.contactRecords.write(*this); });
    family.customProperties.write(*this);
}

void CTextWriter::writeContactRecords(const CContactRecordList& records) { out.value("count", records.count()); }

} // namespace NBrenmark
