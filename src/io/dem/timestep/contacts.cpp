// Contacts, with the collisions that go on in them and the extra values of old decks.

#include "core/log.h"
#include "io/dem/custom_properties.h"
#include "io/dem/dem_reader.h"
#include "io/dem/dem_writer.h"
#include "io/dem/timestep/collision_arrays.h"
#include "results/row_bytes.h"

namespace NBrenmark {

/// The arrays of a family in the form written now.
static constexpr quint32 contactFields = 255;
/// The arrays of a family before it had blocks, whatever its word says.
static constexpr quint32 fieldsBeforeBlocks = 0x40FF;
// What only old decks store: the normal force a second time, with a vector further on that no one
// needs, and a word of the same kind.
static constexpr quint32 repeatedForceField = 0x2000;
static constexpr quint32 droppedWordField = 0x4000;

/// The fields whose rows take bytes: with none of them a count means nothing.
static constexpr quint32 fieldsWithRows =
    contactFields | eContactLegacyScalar | eContactLegacyFlags | repeatedForceField | droppedWordField;

static constexpr qint64 leastRecordBytes = 2 * 4 + 4 + 4 * 8; // two words, an empty name and four numbers

// ---------------------------------------------------------------- extra values

template <class TForm, class TRecord>
static void recordForm(TForm& f, TRecord& record)
{
    f.i32(record.kind); // 0 numbers, 1 vectors; others have no values
    f.i32(record.type);
    f.text(record.name);
    f.f64(record.scale); // carried; nothing here uses it
    f.point(record.defaultValue);
}

template <class TArrays, class TRecords>
static void recordValuesForm(TArrays& arrays, TRecords& records)
{
    for (auto& record : records.records)
        record.withValues([&](auto& array) { arrays.rows("values of a contact record", array); });
}

void CDemTimestepDataReader::readContactRecords(CContactRecordList& records)
{
    CInForm f = in();
    f.blockOf(eContactRecordsBlock, "contact records", records, [&] {
        f.length("contact record", leastRecordBytes, records.records);
        for (SContactRecord& record : records.records) {
            recordForm(f, record);
            record.makeValues();
        }
        const quint32 rows = f.count("row of contact records", 0);
        if (records.records.empty())
            return;
        bool deflated = false;
        f.flag8(deflated);
        f.group(deflated, rows, [&](CArrayGroupReader& arrays) { recordValuesForm(arrays, records); });
    });
}

void CDemTimestepDataWriter::writeContactRecords(const CContactRecordList& records)
{
    COutForm f = out();
    f.block(eContactRecordsBlock, "contact records", [&] {
        f.length("contact record", leastRecordBytes, records.records);
        for (const SContactRecord& record : records.records)
            recordForm(f, record);
        const quint32 rows = records.rowCount();
        f.i32(rows);
        if (records.records.empty())
            return;
        const bool deflated = compressArrays() && rows >= leastDeflatedRows;
        f.flag8(deflated);
        f.group(deflated, rows, [&](CArrayGroupWriter& arrays) { recordValuesForm(arrays, records); });
    });
}

// ---------------------------------------------------------------- one family

/// Consumed, never kept.
template <class TRow>
static void dropRows(CArrayGroupReader& arrays, const char* what)
{
    arrays.skip(what, arrays.rowCount(), sizeof(TRow));
}

/// The arrays that the word of stored fields names, in the order of the file.
template <class TArrays, class TContacts>
static void rowsForm(TArrays& arrays, quint32 fields, TContacts& c)
{
    const auto has = [fields](quint32 field) { return (fields & field) != 0; };
    const auto rows = [&](quint32 field, const char* what, auto& array) {
        if (has(field))
            arrays.rows(what, array);
    };
    rows(eContactEnds, "contact ends", c.rows); // positions in types and meshes: checked after the read
    rows(eContactTangentialOverlap, "tangential overlaps", c.tangentialOverlap); // m
    rows(eContactVector1, "first contact vectors", c.contactVector1);      // m, from the first centre to the contact
    rows(eContactVector2, "second contact vectors", c.contactVector2);     // m, from the second partner's centre
    rows(eContactPosition, "contact positions", c.position);               // m
    rows(eContactNormalOverlap, "normal overlaps", c.normalOverlap);       // m; below 0: released
    rows(eContactNormalForce, "normal forces", c.normalForce);             // N
    rows(repeatedForceField, "normal forces", c.normalForce);              // N; the later one counts
    rows(eContactTangentialForce, "tangential forces", c.tangentialForce); // N
    rows(eContactLegacyFlags, "contact flags", c.legacyFlags);             // carried within this family alone
    if constexpr (TArrays::isReading) {
        if (has(repeatedForceField))
            dropRows<C3DVector>(arrays, "vectors of old contacts");
        if (has(droppedWordField))
            dropRows<quint32>(arrays, "words of old contacts");
    }
    rows(eContactLegacyScalar, "contact scalars", c.legacyScalar); // carried within this family alone
    if (has(eContactRecordValues))
        recordValuesForm(arrays, c.contactRecords);
    if (has(eContactCollisions) && c.collisionsActive)
        collisionArraysForm(arrays, c.activeCollisions.mask, c.activeCollisions);
}

static quint32 readFields(CInForm& f)
{
    quint32 fields = contactFields;
    f.i32(fields, from(20, 0, 6), contactFields); // EContactField; below 20.0.17 not to be believed
    if (!f.stores(gateContactBlocks))
        fields = fieldsBeforeBlocks | (f.stores(below(20, 0, 9)) ? repeatedForceField : 0);
    return fields;
}

void CDemTimestepDataReader::readContactsBase(CContactsBase& family)
{
    CInForm f = in();
    family.clear();
    quint32 count = f.count("contact", 0);
    bool deflated = false;
    f.flag8(deflated);
    const quint32 fields = readFields(f);
    if (f.stores(gateContactBlocks))
        f.flag8(family.collisionsActive); // each row has a nested record
    const quint64 rowBytes = contactRowBytes + (family.collisionsActive ? collisionRowBytes : 0);
    if ((count > 0 || family.collisionsActive) && fields != 0)
        f.group(
            deflated, count, [&](CArrayGroupReader& arrays) { rowsForm(arrays, fields, family); }, rowBytes);
    if (count > 0 && (fields & fieldsWithRows) == 0) {
        report(eLost, NLogTitle::legacyRead, counted(count, "contact") + " without data dropped", count);
        count = 0;
    }
    const quint32 repeated = (fields & repeatedForceField) != 0 ? quint32(eContactNormalForce) : 0;
    family.fillUp(count, fields | repeated, NLogTitle::legacyRead);
    if (f.stores(gateContactBlocks)) {
        family.activeCollisions.read(*this);
        family.contactRecords.read(*this);
    }
    family.settle(NLogTitle::legacyRead);
    family.customProperties.resetToInitialValues(count);
    if (f.since(22, 1, 1))
        family.customProperties.read(*this);
}

void CDemTimestepDataWriter::writeContactsBase(CContactsBase& family)
{
    family.compact();
    const quint32 mask = stream->options.timestepMask;
    const quint32 count = (mask & family.familyMask()) != 0 ? family.rowCount() : 0;
    const bool deflated = compressArrays() && count >= leastDeflatedRows;
    COutForm f = out();
    f.i32(count);
    f.flag8(deflated);
    f.i32(contactFields);             // EContactField
    f.flag8(family.collisionsActive); // each row has a nested record
    if (count > 0)
        f.group(deflated, count, [&](CArrayGroupWriter& arrays) { rowsForm(arrays, contactFields, family); });
    family.activeCollisions.write(*this);
    family.contactRecords.write(*this);
    if (count > 0 && (mask & eContactProperties) != 0)
        family.customProperties.write(*this);
    else
        writeNoCustomProperties(f);
}

// ---------------------------------------------------------------- both families

void CDemTimestepDataReader::readContacts(CContacts& contacts)
{
    CInForm f = in();
    if (f.stores(gateContactBlocks)) {
        f.families(eContactsBlock, "contacts", *this, contacts.surfaceSurface, contacts.surfaceGeometry);
        return;
    }
    CEmptiedUnlessWhole<CContacts> reading(contacts);
    f.dropI32(); // before blocks came, one word that no one uses
    contacts.surfaceSurface.read(*this);
    contacts.surfaceGeometry.read(*this);
    reading.whole = true;
}

void CDemTimestepDataWriter::writeContacts(CContacts& contacts)
{
    out().block(eContactsBlock, "contacts", [&] {
        contacts.surfaceSurface.write(*this);
        contacts.surfaceGeometry.write(*this);
    });
}

} // namespace NBrenmark
