// Contacts, bonds and collisions by ids become rows by places: each end is looked up once.
#include "legacy/old_pair_conversion.h"

#include "core/counted.h"
#include "core/log.h"
#include "legacy/old_collisions.h"
#include "legacy/old_contacts.h"
#include "model/geometry_groups.h"
#include "model/particle_types.h"
#include "results/bonds.h"
#include "results/collisions.h"
#include "results/contacts.h"

#include <map>
#include <optional>

namespace NBrenmark::NLegacySupport {

/// One end of a row: an index and an element.
using PairEnd = std::pair<quint32, quint32>;

/// \param sphere  its number within the particle
static std::optional<PairEnd> particleEnd(const CParticleTypes& types, qint32 particleId, qint32 sphere)
{
    quint32 type = 0;
    quint32 slot = 0;
    if (particleId < 1 || !types.locate(static_cast<quint32>(particleId), type, slot))
        return std::nullopt;
    const quint64 spheres = types.types[type]->spheres.size();
    if (sphere < 0 || static_cast<quint64>(sphere) >= spheres)
        return std::nullopt; // counted on from here, it would be another particle's sphere
    return PairEnd(type, static_cast<quint32>(slot * spheres + static_cast<quint64>(sphere)));
}

static std::optional<PairEnd> triangleEnd(const GeometryGroups& groups, qint32 triangleId)
{
    PairEnd end;
    if (triangleId < 0 || !groups.triangleIds.locate(static_cast<quint32>(triangleId), end.first, end.second))
        return std::nullopt;
    return end;
}

static PairRow rowOf(const PairEnd& first, const PairEnd& second)
{
    return PairRow{first.first, first.second, second.first, second.second};
}

static C3DVector negated(const C3DVector& v) { return C3DVector(-v.x, -v.y, -v.z); }

static void reportLost(quint64 lost, const char* one, const char* several, const std::string& why)
{
    if (lost > 0)
        report(eLost, NLogTitle::legacyRead,
               std::to_string(lost) + ' ' + (lost == 1 ? one : several) + " left out: " + why, lost);
}

static constexpr const char* missingEnd = "a particle, sphere or triangle of them is missing";

// ---------------------------------------------------------------- contacts

/// \param endsOf(contact, first, second)  \return whether both were found
/// \param lost  grows by the contacts whose ends aren't there
/// \param free  grows by the records that are no contact: their overlap is negative
template <class TEndsOf>
static void linkFamily(CContactsBase& family, const std::vector<SLegacyContact>& old, quint64& lost, quint64& free,
                       TEndsOf&& endsOf)
{
    family.clear();
    family.resizeRows(old.size());
    family.customProperties.resetToInitialValues(static_cast<unsigned int>(old.size()));
    for (quint32 i = 0; i < old.size(); ++i) {
        const SLegacyContact& contact = old[i];
        family.normalForce[i] = contact.normalForce;
        family.tangentialForce[i] = contact.tangentialForce;
        family.normalOverlap[i] = contact.normalOverlap;
        family.contactVector1[i] = contact.contactVector1;
        family.contactVector2[i] = contact.contactVector2;
        family.position[i] = contact.position;
        family.tangentialOverlap[i] = contact.tangentialOverlap;
        std::optional<PairEnd> first;
        std::optional<PairEnd> second;
        endsOf(contact, first, second);
        if (first && second && family.isLive(i)) {
            family.rows[i] = rowOf(*first, *second);
            continue;
        }
        ++(family.isLive(i) ? lost : free);
        family.releaseRow(i);
    }
}

/// The particle with the lower id is the first end.
static void putLowerIdFirst(CSurfaceSurfaceContacts& family, const std::vector<SLegacyContact>& old)
{
    for (quint32 i = 0; i < old.size(); ++i) {
        if (!family.isLive(i) || old[i].firstParticleId < old[i].secondParticleId)
            continue;
        PairRow& row = family.rows[i];
        row = PairRow{row[2], row[3], row[0], row[1]};
        std::swap(family.contactVector1[i], family.contactVector2[i]);
        family.normalForce[i] = negated(family.normalForce[i]);
        family.tangentialForce[i] = negated(family.tangentialForce[i]);
    }
}

void linkLegacyRows(CContacts& contacts, const SLegacyContactLists& old, const CParticleTypes& types,
                    const GeometryGroups& groups)
{
    using End = std::optional<PairEnd>;
    quint64 lost = 0;
    quint64 free = 0;
    linkFamily(contacts.surfaceSurface, old.surfaceSurface, lost, free,
               [&](const SLegacyContact& contact, End& first, End& second) {
                   first = particleEnd(types, contact.firstParticleId, contact.firstElement);
                   second = particleEnd(types, contact.secondParticleId, contact.secondElement);
               });
    putLowerIdFirst(contacts.surfaceSurface, old.surfaceSurface);
    linkFamily(contacts.surfaceGeometry, old.surfaceGeometry, lost, free,
               [&](const SLegacyContact& contact, End& first, End& second) {
                   first = particleEnd(types, contact.firstParticleId, contact.firstElement);
                   second = triangleEnd(groups, contact.triangleId);
               });
    reportLost(lost, "contact", "contacts", missingEnd);
    report(eLost, NLogTitle::legacyRead, counted(free, "contact") + " with a negative overlap dropped", free);
}

// ---------------------------------------------------------------- bonds

static void addBond(CSurfaceSurfaceBonds& family, const CSurfSurfBond& bond, const PairEnd& first,
                    const PairEnd& second)
{
    quint32 row = 0;
    family.allocateRow(row, true);
    const bool swaps = bond.firstParticleId > bond.secondParticleId;
    const auto turned = [swaps](const C3DVector& v) { return swaps ? negated(v) : v; };
    family.rows[row] = swaps ? rowOf(second, first) : rowOf(first, second);
    family.normalForce[row] = turned(bond.normalForce);
    family.tangentialForce[row] = turned(bond.tangentialForce);
    family.normalTorque[row] = turned(bond.normalTorque);
    family.tangentialTorque[row] = turned(bond.tangentialTorque);
    family.state[row] = bond.state;
    family.breakTime[row] = bond.breakTime;
}

void linkLegacyRows(CBonds& bonds, const CBondList& old, const CParticleTypes& types)
{
    bonds.surfaceSurface.clear();
    quint64 lost = 0;
    for (const CSurfSurfBond& bond : old) {
        const auto first = particleEnd(types, bond.firstParticleId, bond.firstElement);
        const auto second = particleEnd(types, bond.secondParticleId, bond.secondElement);
        if (first && second)
            addBond(bonds.surfaceSurface, bond, *first, *second);
        else
            ++lost;
    }
    reportLost(lost, "bond", "bonds", missingEnd);
}

// ---------------------------------------------------------------- collisions

static void storeEnd(SCollisionEnd& end, quint32 record, const SLegacyParticleSide& side)
{
    end.ids[record] = static_cast<quint32>(side.element);
    end.velocity[record] = side.velocity;
    end.position[record] = side.position;
    end.radius[record] = side.radius;
    end.angularVelocity[record] = side.angularVelocity;
    end.orientation[record] = side.orientation;
}

static void storeEnd(SCollisionEnd& end, quint32 record, const SLegacyGeometrySide& side)
{
    end.ids[record] = static_cast<quint32>(side.triangleId);
    end.velocity[record] = side.velocity;
    end.position[record] = side.position;
}

/// All but the ends, which the row of the contact names.
/// \param turned  the ends have changed places
static void storeRecord(CCollisionsBase& family, const CCollision& collision, quint32 record, bool turned)
{
    const auto seen = [turned](const C3DVector& v) { return turned ? negated(v) : v; };
    family.ids[record] = collision.id;
    family.startTime[record] = collision.startTime;
    family.endTime[record] = collision.endTime;
    family.iterations[record] = collision.iterations;
    family.position[record] = collision.position;
    family.unitCpVector[record] = collision.unitCpVector;
    family.relativeVelocity[record] = seen(collision.relativeVelocity);
    family.maxNormalForce[record] = seen(collision.maxNormalForce);
    family.maxTangentialForce[record] = seen(collision.maxTangentialForce);
    family.totalNormalForce[record] = collision.totalNormalForce;
    family.totalTangentialForce[record] = collision.totalTangentialForce;
    family.normalEnergy[record] = collision.normalEnergy;
    family.shearEnergy[record] = collision.shearEnergy;
}

template <class TCollision>
static void appendRecord(CCollisionsBase& family, const TCollision& collision)
{
    const quint32 record = family.recordCount();
    family.resizeRecords(record + 1);
    storeRecord(family, collision, record, false);
    storeEnd(family.first, record, collision.first);
    storeEnd(family.second, record, collision.second);
}

/// The live rows of a family by their ends, each pair by its first row.
static std::map<PairRow, quint32> rowsByEnds(const CContactsBase& family)
{
    std::map<PairRow, quint32> rows;
    for (quint32 row = 0; row < family.rowCount(); ++row)
        if (family.isLive(row))
            rows.emplace(family.rows[row], row);
    return rows;
}

struct SCollisionCounts
{
    quint64 finished = 0;
    quint64 withoutContact = 0;
};

/// \param placeOf(collision, row)  the ends of a collision that goes on; \return whether they change places
template <class TCollision, class TPlaceOf>
static void linkFamily(CCollisionsBase& finished, CContactsBase& contacts, const CCollisionList& old,
                       SCollisionCounts& counts, TPlaceOf&& placeOf)
{
    if (old.empty())
        return;
    if (!contacts.collisionsActive) {
        contacts.collisionsActive = true;
        contacts.resizeRows(contacts.rowCount());
    }
    const std::map<PairRow, quint32> rows = rowsByEnds(contacts);
    for (const auto& entry : old) {
        const auto* const collision = dynamic_cast<const TCollision*>(entry.get());
        if (collision == nullptr) {
            ++counts.withoutContact; // of the other kind: it belongs to no pair of this list
            continue;
        }
        if (collision->hasEnded()) {
            appendRecord(finished, *collision);
            ++counts.finished;
            continue;
        }
        PairRow ends{noRow, noRow, noRow, noRow};
        const bool turned = placeOf(*collision, ends);
        const auto row = rows.find(ends);
        if (row != rows.end())
            storeRecord(contacts.activeCollisions, *collision, row->second, turned);
        else
            ++counts.withoutContact;
    }
}

void linkLegacyRows(CCollisions& collisions, CContacts& contacts, const CActiveCollisions& old,
                    const CParticleTypes& types, const GeometryGroups& groups)
{
    SCollisionCounts counts;
    linkFamily<CSurfSurfCollision>(collisions.surfaceSurface, contacts.surfaceSurface, old.surfaceSurface, counts,
                                   [&](const CSurfSurfCollision& collision, PairRow& ends) {
                                       const auto first =
                                           particleEnd(types, collision.first.particleId, collision.first.element);
                                       const auto second =
                                           particleEnd(types, collision.second.particleId, collision.second.element);
                                       const bool turned = collision.first.particleId >= collision.second.particleId;
                                       if (first && second)
                                           ends = turned ? rowOf(*second, *first) : rowOf(*first, *second);
                                       return turned;
                                   });
    linkFamily<CSurfGeomCollision>(collisions.surfaceGeometry, contacts.surfaceGeometry, old.surfaceGeometry, counts,
                                   [&](const CSurfGeomCollision& collision, PairRow& ends) {
                                       const auto first =
                                           particleEnd(types, collision.first.particleId, collision.first.element);
                                       const auto second = triangleEnd(groups, collision.second.triangleId);
                                       if (first && second)
                                           ends = rowOf(*first, *second);
                                       return false;
                                   });
    reportLost(counts.withoutContact, "collision that goes on", "collisions that go on", "without a contact");
    if (counts.finished > 0)
        reportOnce(eNotCarried, NLogTitle::legacyRead,
                   "of the ends of " + std::to_string(counts.finished) +
                       " finished collisions the number of the sphere or triangle is kept; names and ids of the "
                       "particles have no place in the current format",
                   counts.finished);
}

} // namespace NBrenmark::NLegacySupport
