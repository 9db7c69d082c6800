// Contacts. Families with rows are refused; empty ones have their place.
#include "results/contacts.h"

#include "io/dem/custom_properties.h"
#include "io/dem/dem_reader.h"
#include "io/dem/dem_writer.h"

namespace NBrenmark {

/// The arrays of a family in the form written now.
static constexpr quint32 contactFields = 255;
/// The arrays of a family before it had blocks, whatever its word says.
static constexpr quint32 fieldsBeforeBlocks = 0x40FF;
static constexpr quint32 repeatedForceField = 0x2000;

static constexpr qint64 leastRecordBytes = 2 * 4 + 4 + 4 * 8;

void CDemTimestepDataReader::readContactRecords(CContactRecordList&)
{
    CInForm f = in();
    f.block(eContactRecordsBlock, "contact records", [&] {
        if (const quint32 records = f.count("contact record", leastRecordBytes); records > 0)
            throw not_carried_error(counted(records, "contact record"));
        f.dropI32(); // the length of each record's array
    });
}

void CDemTimestepDataWriter::writeContactRecords(const CContactRecordList& records)
{
    COutForm f = out();
    f.block(eContactRecordsBlock, "contact records", [&] {
        f.i32(records.count());
        f.dropI32();
    });
}

void CDemTimestepDataReader::readContactsBase(CContactsBase& family)
{
    CInForm f = in();
    const bool hasBlocks = f.stores(gateContactBlocks);
    const quint32 count = f.count("contact", 0);
    bool deflated = false;
    f.flag8(deflated);
    quint32 mask = contactFields;
    f.i32(mask, from(20, 0, 6), contactFields);
    if (!hasBlocks)
        mask = fieldsBeforeBlocks | (f.stores(below(20, 0, 9)) ? repeatedForceField : 0);
    if (hasBlocks)
        f.flag8(family.collisionsActive);
    if (count > 0)
        throw not_carried_error(counted(count, "contact"));
    if (family.collisionsActive && mask != 0)
        f.group(deflated, 0, [](CArrayGroupReader&) {});
    if (hasBlocks) {
        family.activeCollisions.read(*this);
        family.contactRecords.read(*this);
    }
    family.customProperties.resetToInitialValues(family.rowCount());
    if (f.since(22, 1, 1))
        family.customProperties.read(*this);
}

void CDemTimestepDataWriter::writeContactsBase(const CContactsBase& family)
{
    COutForm f = out();
    f.i32(family.rowCount());
    f.flag8(false);
    f.i32(contactFields);
    f.flag8(family.collisionsActive);
    family.activeCollisions.write(*this);
    family.contactRecords.write(*this);
    if (family.rowCount() > 0 && (stream->options.timestepMask & eContactProperties) != 0)
        family.customProperties.write(*this);
    else
        writeNoCustomProperties(f);
}

void CDemTimestepDataReader::readContacts(CContacts& contacts)
{
    CInForm f = in();
    const auto readFamilies = [&] {
        contacts.surfaceSurface.read(*this);
        contacts.surfaceGeometry.read(*this);
    };
    if (f.stores(gateContactBlocks))
        f.block(eContactsBlock, "contacts", readFamilies);
    else {
        f.dropI32();
        readFamilies();
    }
}

void CDemTimestepDataWriter::writeContacts(const CContacts& contacts)
{
    out().block(eContactsBlock, "contacts", [&] {
        contacts.surfaceSurface.write(*this);
        contacts.surfaceGeometry.write(*this);
    });
}

} // namespace NBrenmark
