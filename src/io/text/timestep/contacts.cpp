// The text of contacts, released rows taken out as by every writer.
#include "results/contacts.h"
#include "io/text/text_writer.h"

#include <algorithm>

namespace NBrenmark {

void CTextWriter::writeContacts(CContacts& contacts)
{
    out.group("surfaceSurface", [&] { contacts.surfaceSurface.write(*this); });
    out.group("surfaceGeometry", [&] { contacts.surfaceGeometry.write(*this); });
}

template <class T>
static bool holdsAnything(const std::vector<T>& values)
{
    return std::any_of(values.begin(), values.end(), [](const T& value) { return value != T(0); });
}

/// The rows as they are saved: those that were released are no contacts.
void CTextWriter::writeContactsBase(CContactsBase& c)
{
    c.compact();
    out.value("rows", c.rowCount());
    out.value("collisionsActive", c.collisionsActive);
    out.array("ends", c.rows);
    out.array("position", c.position);                   // m
    out.array("contactVector1", c.contactVector1);       // m, from the first centre to the contact
    out.array("contactVector2", c.contactVector2);       // m, from the second partner's centre
    out.array("normalOverlap", c.normalOverlap);         // m
    out.array("tangentialOverlap", c.tangentialOverlap); // m
    out.array("normalForce", c.normalForce);             // N
    out.array("tangentialForce", c.tangentialForce);     // N
    // What only some legacy decks hold.
    if (holdsAnything(c.legacyScalar))
        out.array("legacyScalar", c.legacyScalar);
    if (holdsAnything(c.legacyFlags))
        out.array("legacyFlags", c.legacyFlags);
    out.group("activeCollisions", [&] { c.activeCollisions.write(*this); });
    out.group("contactRecords", [&] { c.contactRecords.write(*this); });
    c.customProperties.write(*this);
}

void CTextWriter::writeContactRecords(const CContactRecordList& records)
{
    out.value("count", records.count());
    CListSegments segments;
    for (const SContactRecord& record : records.records)
        out.group(segments.next(record.name), [&] {
            out.value("kind", record.kind);
            out.value("type", record.type);
            out.value("scale", record.scale);
            out.value("defaultValue", record.defaultValue);
            record.withValues([&](const auto& values) { out.array("values", values); });
        });
}

} // namespace NBrenmark
