// Rows of contacts and the chain of released ones.
#include "results/contacts.h"

#include "core/counted.h"
#include "core/log.h"
#include "visitors/file_visitor_reader.h"
#include "visitors/file_visitor_writer.h"

#include <algorithm>
#include <mutex>

namespace NBrenmark {

/// The arrays of a field set that have one element a row, whatever the deck.
template <class TVisit>
static void forEachArray(CContactsBase& c, quint32 fieldSet, const TVisit& visit)
{
    const auto visitIf = [&](EContactField field, auto& array) {
        if (fieldSet & field)
            visit(array);
    };
    visitIf(eContactEnds, c.rows);
    visitIf(eContactTangentialOverlap, c.tangentialOverlap);
    visitIf(eContactVector1, c.contactVector1);
    visitIf(eContactVector2, c.contactVector2);
    visitIf(eContactPosition, c.position);
    visitIf(eContactNormalOverlap, c.normalOverlap);
    visitIf(eContactNormalForce, c.normalForce);
    visitIf(eContactTangentialForce, c.tangentialForce);
    visitIf(eContactLegacyScalar, c.legacyScalar);
    visitIf(eContactLegacyFlags, c.legacyFlags);
}

// ---------------------------------------------------------------- rows

void CContactsBase::read(IFileVisitorReader& v) { v.readContactsBase(*this); }

void CContactsBase::write(IFileVisitorWriter& v) { v.writeContactsBase(*this); }

quint32 CContactsBase::liveCount() const
{
    return static_cast<quint32>(
        std::count_if(normalOverlap.begin(), normalOverlap.end(), [](double overlap) { return !(overlap < 0.0); }));
}

quint32 CContactsBase::strayCount() const
{
    return static_cast<quint32>(std::count_if(normalOverlap.begin(), normalOverlap.end(), [](double overlap) {
        return overlap < 0.0 && overlap != takenOverlap && overlap != releasedOverlap;
    }));
}

bool CContactsBase::allocateRow(quint32& row, bool exclusive)
{
    std::unique_lock<std::mutex> guard(lock, std::defer_lock);
    if (!exclusive)
        guard.lock();
    row = 0;
    if (firstFree != 0) {
        row = firstFree - 1;
        firstFree = rows[row][1];
        normalOverlap[row] = takenOverlap;
        return true;
    }
    if (rows.size() == rows.capacity()) {
        if (!exclusive)
            return false;
        makeRoom();
    }
    row = rowCount();
    resizeRows(rows.size() + 1);
    return true;
}

void CContactsBase::releaseRow(quint32 row)
{
    const std::lock_guard<std::mutex> guard(lock);
    if (normalOverlap[row] == releasedOverlap)
        return;
    normalOverlap[row] = releasedOverlap;
    rows[row][1] = firstFree;
    ++freedCount;
    firstFree = row + 1;
}

bool CContactsBase::findRow(const std::pair<quint32, quint32>& firstEnd, const std::pair<quint32, quint32>& secondEnd,
                            quint32& row) const
{
    const PairRow wanted{firstEnd.first, firstEnd.second, secondEnd.first, secondEnd.second};
    for (row = 0; row < rowCount(); ++row)
        if (isLive(row) && rows[row] == wanted)
            return true;
    row = noRow;
    return false;
}

// ---------------------------------------------------------------- all rows at once

bool CContactsBase::hasCollisions(quint32 fieldSet) const
{
    return collisionsActive && (fieldSet & eContactCollisions);
}

void CContactsBase::reserveAll(std::size_t capacity, quint32 fieldSet)
{
    forEachArray(*this, fieldSet, [capacity](auto& array) { array.reserve(capacity); });
    if (fieldSet & eContactRecordValues)
        contactRecords.reserveRows(capacity);
    if (hasCollisions(fieldSet))
        activeCollisions.reserveRecords(capacity);
    customProperties.reserve(static_cast<unsigned int>(capacity));
}

void CContactsBase::makeRoom()
{
    if (rows.capacity() < leastCapacity)
        rows.reserve(leastCapacity);
    else { // by the factor that the vector grows with
        rows.emplace_back();
        rows.pop_back();
    }
    reserveAll(rows.capacity());
}

void CContactsBase::reserveRows(std::size_t count)
{
    if (count == 0)
        makeRoom();
    else
        reserveAll(std::max(count, leastCapacity));
}

void CContactsBase::resizeRows(std::size_t count, quint32 fieldSet)
{
    forEachArray(*this, fieldSet, [count](auto& array) { array.resize(count); });
    if (fieldSet & eContactRecordValues)
        contactRecords.resizeRows(count);
    if (hasCollisions(fieldSet))
        activeCollisions.resizeRecords(count);
    customProperties.resize(static_cast<unsigned int>(count));
}

void CContactsBase::fillUp(quint32 count, quint32 stored, const SLogTitle& title)
{
    static constexpr std::pair<quint32, const char*> arrays[] = {
        {eContactEnds, "ends"},
        {eContactPosition, "position"},
        {eContactVector1, "contact vector 1"},
        {eContactVector2, "contact vector 2"},
        {eContactNormalOverlap, "normal overlap"},
        {eContactTangentialOverlap, "tangential overlap"},
        {eContactNormalForce, "normal force"},
        {eContactTangentialForce, "tangential force"},
    };
    resizeRows(count);
    std::string absent;
    for (const auto& [field, name] : arrays)
        if ((stored & field) == 0)
            absent += (absent.empty() ? "" : ", ") + std::string(name);
    if (count > 0 && !absent.empty())
        report(eDefaulted, title, counted(count, "contact") + " without " + absent + ": filled up with zeros.", count);
}

void CContactsBase::clear()
{
    forEachArray(*this, eAllContactFields, [](auto& array) { array.clear(); });
    contactRecords.clear();
    activeCollisions.clear();
    customProperties.resetAll();
    firstFree = 0;
}

void CContactsBase::copyRow(quint32 source, quint32 target, quint32 fieldSet)
{
    forEachArray(*this, fieldSet, [=](auto& array) { array[target] = array[source]; });
    if (fieldSet & eContactRecordValues)
        contactRecords.copyRow(source, target);
    if (hasCollisions(fieldSet))
        activeCollisions.copyRecord(source, target, eOwnCollisionFields);
    customProperties.copyItem(source, target);
}

void CContactsBase::compact()
{
    quint32 end = rowCount();
    for (quint32 row = 0; row < end;) {
        if (isLive(row)) {
            ++row;
            continue;
        }
        while (end > row && !isLive(end - 1))
            --end;
        if (end > row)
            copyRow(--end, row);
    }
    if (end < rowCount())
        resizeRows(end);
    firstFree = 0;
}

void CContactsBase::rebuildFreeChain()
{
    firstFree = 0;
    for (quint32 row = 0; row < rowCount(); ++row) {
        if (normalOverlap[row] != releasedOverlap)
            continue;
        rows[row][1] = firstFree;
        firstFree = row + 1;
    }
}

bool CContactsBase::fitCollisions()
{
    const quint32 found = activeCollisions.recordCount();
    if (!collisionsActive || found == rowCount())
        return true;
    activeCollisions.resizeRecords(rowCount());
    return found == 0;
}

bool CContactsBase::fitRecords()
{
    const quint32 found = contactRecords.rowCount();
    contactRecords.resizeRows(rowCount());
    return found == 0 || found == rowCount();
}

static void reportMisfit(const SLogTitle& title, quint32 stored, quint32 contacts, const char* noun, const char* of)
{
    const std::string text = counted(stored, noun) + " of " + of + " for " + counted(contacts, "contact");
    if (stored > contacts)
        report(eLost, title, text + ": the others are cut off.", stored - contacts);
    else
        report(eDefaulted, title, text + ": filled up with zeros.", contacts - stored);
}

void CContactsBase::settle(const SLogTitle& title)
{
    const quint32 collisions = activeCollisions.recordCount();
    const quint32 values = contactRecords.rowCount();
    if (!fitCollisions())
        reportMisfit(title, collisions, rowCount(), "record", "collisions");
    if (!fitRecords())
        reportMisfit(title, values, rowCount(), "row", "contact records");
    if (const quint32 strays = strayCount(); strays > 0)
        report(eLost, title, counted(strays, "contact") + " with a negative overlap dropped.", strays);
    rebuildFreeChain();
}

// ---------------------------------------------------------------- both families

CContacts::CContacts(CCustomPropertyManager* propertyManager)
    : surfaceSurface(propertyManager, activeSurfaceSurface), surfaceGeometry(propertyManager, activeSurfaceGeometry)
{}

void CContacts::read(IFileVisitorReader& v) { v.readContacts(*this); }

void CContacts::write(IFileVisitorWriter& v) { v.writeContacts(*this); }

void CContacts::clear()
{
    surfaceGeometry.clear();
    surfaceSurface.clear();
}

/// \return rows that don't pass
template <class TPasses>
static quint32 releaseUnless(CContactsBase& family, const TPasses& passes)
{
    quint32 failed = 0;
    for (quint32 row = 0; row < family.rowCount(); ++row) {
        if (passes(family.rows[row]))
            continue;
        family.releaseRow(row);
        ++failed;
    }
    return failed;
}

quint32 CContacts::removeDanglingRows(const CParticleTypes& types, const TriangleCounts& groups)
{
    SParticleEnd end;
    const quint32 failed = releaseUnless(surfaceGeometry, [&](const PairRow& row) {
        return findParticleEnd(types, row[0], row[1], end) && hasTriangle(groups, row[2], row[3]);
    });
    return failed + releaseUnless(surfaceSurface, [&](const PairRow& row) {
               return findParticleEnd(types, row[0], row[1], end) && findParticleEnd(types, row[2], row[3], end);
           });
}

// ---------------------------------------------------------------- values by the names of attributes

bool CContactsBase::getValue(NAttributes::SAttributeValue& out, const NAttributes::CAttributeDescriptor* attribute,
                             quint32 row) const
{
    return valueOfRows(
        out, row, rowCount(), attribute, [this](quint32 i) { return isLive(i); },
        [&](NAttributes::SAttributeValue& one, quint32 i) { return attribute->valueForContact(one, *this, i); });
}

} // namespace NBrenmark
