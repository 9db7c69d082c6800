// Contacts: a group for each family.

#include "io/hdf5/hdf5_reader.h"
#include "io/hdf5/hdf5_writer.h"

#include "core/emptied.h"
#include "core/left_behind.h"
#include "core/log.h"
#include "core/shortened.h"
#include "io/hdf5/common_length.h"
#include "io/hdf5/stored_length.h"
#include "io/hdf5/timestep/family_rows.h"
#include "results/row_bytes.h"

#include <algorithm>

namespace NBrenmark {

/// The arrays that this family of files has a place for.
static constexpr quint32 contactFields = 255;

// ---------------------------------------------------------------- one family

/// \param fields  EContactField: what the file holds
template <class TForm, class TContacts>
static void rowsForm(TForm& f, TContacts& c, quint32 fields)
{
    const auto has = [fields](quint32 field) { return (fields & field) != 0; };
    f.rows("contacts", c.rows, has(eContactEnds));         // positions in types and meshes: checked after the read
    f.rows("position", c.position, has(eContactPosition)); // m
    f.rows("contact vector 1", c.contactVector1, has(eContactVector1));    // m, from the first centre to the contact
    f.rows("contact vector 2", c.contactVector2, has(eContactVector2));    // m, from the second partner's centre
    f.rows("normal overlap", c.normalOverlap, has(eContactNormalOverlap)); // m; below 0: released
    f.rows("tangential overlap", c.tangentialOverlap, has(eContactTangentialOverlap)); // m
    f.rows("normal force", c.normalForce, has(eContactNormalForce));                   // N
    f.rows("tangential force", c.tangentialForce, has(eContactTangentialForce));       // N
}

static quint32 commonLength(const CContactsBase& contacts, quint32 fields)
{
    CCommonLength lengths("The contacts");
    rowsForm(lengths, contacts, fields);
    return lengths.common();
}

void CHdf5TimestepDataReader::readContactsBase(CContactsBase& contacts)
{
    contacts.clear();
    CEmptiedUnlessWhole<CContactsBase> reading(contacts);
    quint32 size = 0;
    in().attribute("size", size); // what is announced; the arrays have the last word
    const bool isWanted = (options.timestepMask & contacts.familyMask()) != 0;
    in().attribute("collision on", contacts.collisionsActive); // each row has a nested record
    if (isWanted && (size > 0 || in().hasRows({"contacts", "position"}))) {
        quint32 stored = contactFields;
        in().attribute("mask", stored); // EContactField
        stored &= contactFields;        // other bits are of arrays that only the legacy family has
        // Where none of them is wanted, the others say how many rows there are.
        const quint32 wanted = stored & options.wantedContactFields, fields = wanted != 0 ? wanted : stored;
        CStoredLength lengths(in(), "The contacts have");
        rowsForm(lengths, contacts, fields);
        const quint32 held = lengths.admitted(contactRowBytes);
        in().together([&](CHdf5RowsReader& f) { rowsForm(f, contacts, fields); });
        reportIfOther("contacts", size, held);
        contacts.fillUp(held, stored, NLogTitle::hdf5Read);
    }
    in().group("CollisionsBase/", [&] { contacts.activeCollisions.read(*this); });
    if (contacts.rowCount() == 0)
        contacts.activeCollisions.clear(); // a mask left records that belong to nothing
    contacts.settle(NLogTitle::hdf5Read);
    if ((options.timestepMask & eContactProperties) != 0 && contacts.rowCount() > 0)
        contacts.customProperties.read(*this);
    else if (in().has("CustomProperties")) // without rows the values that a mask left belong to nothing
        in().group("CustomProperties/", [&] {
            for (std::size_t i = 0; i < contacts.customProperties.lists.size(); ++i)
                if (in().has(std::to_string(i)))
                    in().group(std::to_string(i), [] {});
        });
    reading.whole = true;
}

/// What only the legacy family stores.
static void noteLegacyValues(const CContactsBase& contacts)
{
    const auto others = [](const auto& array) {
        using T = typename std::decay_t<decltype(array)>::value_type;
        return array.size() - static_cast<std::size_t>(std::count(array.begin(), array.end(), T(0)));
    };
    noteLeftBehind("legacy scalars of contacts", others(contacts.legacyScalar));
    noteLeftBehind("legacy flags of contacts", others(contacts.legacyFlags));
    for (const SContactRecord& record : contacts.contactRecords.records)
        noteLeftBehind("values of the contact record \"" + shortened(record.name) + '"', record.rowCount());
}

void CHdf5TimestepDataWriter::writeContactsBase(CContactsBase& contacts)
{
    contacts.compact();
    const quint32 size = (options.timestepMask & contacts.familyMask()) != 0 ? contacts.rowCount() : 0;
    out().attribute("size", size);                              // 0 where the masks leave the rows out
    out().attribute("collision on", contacts.collisionsActive); // each row has a nested record
    if (size > 0) {
        commonLength(contacts, contactFields);
        if (!out().isMeasuring())
            noteLegacyValues(contacts);
        out().attribute("mask", contactFields); // EContactField
        rowsForm(out(), contacts, contactFields);
    }
    out().group("CollisionsBase/", [&] { contacts.activeCollisions.write(*this); });
    if ((options.timestepMask & eContactProperties) != 0)
        contacts.customProperties.write(*this);
    else
        out().group("CustomProperties/", [] {});
}

// ---------------------------------------------------------------- both

template <class TForm, class TVisit>
static void contactsForm(TForm& f, CContacts& contacts, TVisit&& visit)
{
    f.group("Contacts/", [&] {
        f.group("SurfaceSurface/", [&] { visit(contacts.surfaceSurface); });
        f.group("SurfaceGeometry/", [&] { visit(contacts.surfaceGeometry); });
    });
}

void CHdf5TimestepDataReader::readContacts(CContacts& contacts)
{
    contactsForm(in(), contacts, [this](CContactsBase& family) { family.read(*this); });
}

void CHdf5TimestepDataWriter::writeContacts(CContacts& contacts)
{
    contactsForm(out(), contacts, [this](CContactsBase& family) { family.write(*this); });
}

} // namespace NBrenmark
