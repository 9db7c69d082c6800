// Contacts: a group for each family.

#include "io/hdf5/hdf5_reader.h"
#include "io/hdf5/hdf5_writer.h"

#include "io/hdf5/counted.h"
#include "results/contacts.h"

namespace NBrenmark {

// ---------------------------------------------------------------- one family

void CHdf5TimestepDataReader::readContactsBase(CContactsBase& contacts)
{
    contacts.clear();
    quint32 size = 0;
    in().attribute("size", size);
    if ((options.timestepMask & contacts.familyMask()) == 0)
        size = 0;
    refuseAny(size, "contact", "contacts");
    in().attribute("collision on", contacts.collisionsActive);
    in().group("CollisionsBase/", [&] { contacts.activeCollisions.read(*this); });
    if ((options.timestepMask & eContactProperties) != 0)
        contacts.customProperties.read(*this);
}

void CHdf5TimestepDataWriter::writeContactsBase(const CContactsBase& contacts)
{
    const quint32 size = (options.timestepMask & contacts.familyMask()) != 0 ? contacts.rowCount() : 0;
    refuseAny(size, "contact", "contacts");
    out().attribute("size", size);
    out().attribute("collision on", contacts.collisionsActive);
    out().group("CollisionsBase/", [&] { contacts.activeCollisions.write(*this); });
    if ((options.timestepMask & eContactProperties) != 0)
        contacts.customProperties.write(*this);
    else
        out().group("CustomProperties/", [] {});
}

// ---------------------------------------------------------------- both

template <class TForm, class TContacts, class TVisit>
static void contactsForm(TForm& f, TContacts& contacts, TVisit&& visit)
{
    f.group("Contacts/", [&] {
        f.group("SurfaceSurface/", [&] { visit(contacts.surfaceSurface); });
        f.group("SurfaceGeometry/", [&] { visit(contacts.surfaceGeometry); });
    });
}

void CHdf5TimestepDataReader::readContacts(CContacts& contacts)
{
    contactsForm(in(), contacts, [this](auto& family) { family.read(*this); });
}

void CHdf5TimestepDataWriter::writeContacts(const CContacts& contacts)
{
    contactsForm(out(), contacts, [this](const auto& family) { family.write(*this); });
}

} // namespace NBrenmark
