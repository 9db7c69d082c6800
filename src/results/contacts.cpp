#include "results/contacts.h"

#include "visitors/file_visitor_reader.h"
#include "visitors/file_visitor_writer.h"

namespace NBrenmark {

void CContactRecordList::read(IFileVisitorReader& v) { v.readContactRecords(*this); }

void CContactRecordList::write(IFileVisitorWriter& v) const { v.writeContactRecords(*this); }

void CContactsBase::read(IFileVisitorReader& v) { v.readContactsBase(*this); }

void CContactsBase::write(IFileVisitorWriter& v) const { v.writeContactsBase(*this); }

void CContacts::read(IFileVisitorReader& v) { v.readContacts(*this); }

void CContacts::write(IFileVisitorWriter& v) const { v.writeContacts(*this); }

void CContactsBase::clear()
{
    customProperties.resetAll();
    activeCollisions.clear();
}

CContacts::CContacts(CCustomPropertyManager* propertyManager)
    : surfaceSurface(propertyManager, activeSurfaceSurface), surfaceGeometry(propertyManager, activeSurfaceGeometry)
{}

void CContacts::clear()
{
    surfaceGeometry.clear();
    surfaceSurface.clear();
}

} // namespace NBrenmark
