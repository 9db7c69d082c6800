// Contacts, bonds and collisions of timesteps below 20.0.0: a record a pair, read only.
#include "core/log.h"
#include "core/memory_ceiling.h"
#include "core/stop_flag.h"
#include "io/dem/dem_reader.h"
#include "legacy/old_collisions.h"
#include "legacy/old_contacts.h"

namespace NBrenmark {

using namespace NLegacySupport;

static constexpr qint64 leastContactBytes = 3 * 4 + 6 * 24 + 8;
static constexpr qint64 bondBytes = 4 * 4 + 4 * 24 + 4 + 8;

// ---------------------------------------------------------------- contacts

void CDemTimestepDataReader::readLegacySurfSurfContactIds(SLegacyContact& contact)
{
    CInForm f = in();
    f.i32(contact.firstElement); // number of the sphere within its particle
    f.i32(contact.firstParticleId);
    f.i32(contact.secondElement); // number of the sphere within its particle
    f.i32(contact.secondParticleId);
}

void CDemTimestepDataReader::readLegacySurfGeomContactIds(SLegacyContact& contact)
{
    CInForm f = in();
    f.i32(contact.firstElement); // number of the sphere within its particle
    f.i32(contact.firstParticleId);
    f.i32(contact.triangleId); // unique in the deck: no group is named
}

void CDemTimestepDataReader::readLegacyContact(SLegacyContact& contact)
{
    CInForm f = in();
    f.point(contact.normalForce);       // N
    f.point(contact.tangentialForce);   // N
    f.point(contact.contactVector1);    // m, from the first centre to the contact
    f.point(contact.contactVector2);    // m, from the second partner's centre
    f.point(contact.tangentialOverlap); // m
    f.point(contact.position);          // m
    f.f64(contact.normalOverlap);       // m
    f.dropI32(0, from(2, 4, 48));
    // The forces once more, which count.
    f.point(contact.normalForce, from(2, 4, 52), contact.normalForce);         // N
    f.point(contact.tangentialForce, from(2, 4, 52), contact.tangentialForce); // N
}

/// A list of records that are read one by one afterwards.
template <class TList>
static void makeRecords(CInForm& f, const char* noun, const char* plural, qint64 leastBytes, TList& list)
{
    const quint32 count = f.count(noun, leastBytes);
    admitMemory(quint64(count) * sizeof(typename TList::value_type), plural);
    f.stream.rowsAtWork = count;
    list.clear();
    list.resize(count);
}

void CDemTimestepDataReader::readLegacyContacts(SLegacyContactLists& contacts)
{
    CInForm f = in();
    makeRecords(f, "contact", "contacts", leastContactBytes, contacts.surfaceSurface);
    beginRecords("contacts/surfaceSurface");
    for (SLegacyContact& contact : contacts.surfaceSurface) {
        const qint64 byte = stream->position();
        readLegacySurfSurfContactIds(contact);
        readLegacyContact(contact);
        reportRecord(contact, byte);
    }
    leaveIfStopped();
    makeRecords(f, "contact", "contacts", leastContactBytes, contacts.surfaceGeometry);
    beginRecords("contacts/surfaceGeometry");
    for (SLegacyContact& contact : contacts.surfaceGeometry) {
        const qint64 byte = stream->position();
        readLegacySurfGeomContactIds(contact);
        readLegacyContact(contact);
        reportRecord(contact, byte);
    }
    leaveIfStopped();
}

// ---------------------------------------------------------------- bonds

void CDemTimestepDataReader::readLegacySurfSurfBondIds(CSurfSurfBond& bond)
{
    CInForm f = in();
    f.i32(bond.firstElement); // number of the sphere within its particle
    f.i32(bond.firstParticleId);
    f.i32(bond.secondElement); // number of the sphere within its particle
    f.i32(bond.secondParticleId);
}

void CDemTimestepDataReader::readLegacyBond(CBond& bond)
{
    CInForm f = in();
    f.point(bond.normalForce);      // N
    f.point(bond.tangentialForce);  // N
    f.point(bond.normalTorque);     // N m
    f.point(bond.tangentialTorque); // N m
    f.i32(bond.state);              // EBondState
    f.f64(bond.breakTime);          // s
}

void CDemTimestepDataReader::readLegacyBonds(CBondList& bonds)
{
    CInForm f = in();
    makeRecords(f, "bond", "bonds", bondBytes, bonds);
    beginRecords("bonds");
    for (CSurfSurfBond& bond : bonds) {
        const qint64 byte = stream->position();
        bond.read(*this);
        reportRecord(bond, byte);
    }
    leaveIfStopped();
}

// ---------------------------------------------------------------- collisions

/// Collisions have been whole objects since; before, two words each.
static constexpr SGate gateCollisionObjects = from(2, 4, 37);

void CDemTimestepDataReader::readLegacyParticleContactSide(SLegacyParticleSide& side)
{
    CInForm f = in();
    f.point(side.velocity);        // m/s
    f.point(side.angularVelocity); // rad/s
    readQuaternion(side.orientation);
    f.point(side.position); // m
    f.i32(side.element);    // number of the sphere within its particle
    f.i32(side.particleId);
    f.text(side.name);
    f.f64(side.radius); // m
}

void CDemTimestepDataReader::readLegacyGeometryContactSide(SLegacyGeometrySide& side)
{
    CInForm f = in();
    f.point(side.velocity); // m/s
    f.point(side.position); // m
    f.i32(side.triangleId); // unique in the deck: no group is named
    f.text(side.name);
}

void CDemTimestepDataReader::readLegacySurfSurfCollisionSides(CSurfSurfCollision& collision)
{
    readLegacyParticleContactSide(collision.first);
    readLegacyParticleContactSide(collision.second);
}

void CDemTimestepDataReader::readLegacySurfGeomCollisionSides(CSurfGeomCollision& collision)
{
    readLegacyParticleContactSide(collision.first);
    readLegacyGeometryContactSide(collision.second);
}

void CDemTimestepDataReader::readLegacyCollision(CCollision& collision)
{
    CInForm f = in();
    f.point(collision.position);             // m
    f.point(collision.maxNormalForce);       // N
    f.point(collision.totalNormalForce);     // N
    f.point(collision.maxTangentialForce);   // N
    f.point(collision.totalTangentialForce); // N
    f.point(collision.unitCpVector);         // of length 1, along the line of contact
    f.point(collision.relativeVelocity);     // m/s
    f.f64(collision.startTime);              // s
    f.f64(collision.endTime);                // s; above 0: it has ended
    f.i32(collision.iterations);             // time steps
    f.f64(collision.shearEnergy);            // J; before the normal one, other than in the rows of today
    f.f64(collision.normalEnergy);           // J
    f.i32(collision.id);
    if (collision.id >= nextCollisionId)
        nextCollisionId = collision.id + 1;
}

void CDemTimestepDataReader::readLegacyCollisionList(CCollisionList& collisions)
{
    CInForm f = in();
    collisions.clear();
    constexpr qint64 pairBytes = 2 * 4;
    constexpr qint64 kindBytes = 4;
    const bool objects = f.stores(gateCollisionObjects);
    const quint32 count = f.count("collision", objects ? kindBytes : pairBytes);
    for (quint32 i = 0; i < count; ++i) {
        leaveIfStopped();
        const qint64 byte = stream->position();
        qint32 kind = 0;
        f.i32(kind);
        if (!objects) {
            f.dropI32(); // two ids
            continue;
        }
        std::unique_ptr<CCollision> collision = createCollision(kind);
        if (collision == nullptr) {
            reportOnce(eLost, NLogTitle::legacyRead,
                       "collision of the unknown kind " + std::to_string(kind) + " skipped");
            continue;
        }
        admitMemory(sizeof(CSurfSurfCollision), "collisions");
        collision->read(*this);
        if (stream->options.oldRecords != nullptr)
            collision->passTo(*stream->options.oldRecords, byte);
        collisions.push_back(std::move(collision));
    }
    if (count > 0 && !objects)
        report(eNotCarried, NLogTitle::legacyRead,
               counted(count, "collision") + " dropped, of which this version stores no more than who collided", count);
}

void CDemTimestepDataReader::readLegacyActiveCollisions(CActiveCollisions& collisions)
{
    in().i32(nextCollisionId, gateCollisionObjects, nextCollisionId);
    beginRecords("collisions/surfaceSurface");
    readLegacyCollisionList(collisions.surfaceSurface);
    beginRecords("collisions/surfaceGeometry");
    readLegacyCollisionList(collisions.surfaceGeometry);
}

} // namespace NBrenmark
