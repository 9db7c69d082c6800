// Particle prototypes, in decks below 20.0.0: a list of them in a creator block, one for each particle in a timestep.
#include "legacy/particle_prototypes.h"

#include "core/log.h"
#include "core/memory_ceiling.h"
#include "core/shortened.h"
#include "core/stop_flag.h"
#include "io/dem/dem_reader.h"
#include "io/dem/old_charge.h"
#include "io/dem/repeated_names.h"
#include "model/domain.h"

#include <stdexcept>

namespace NBrenmark {

using namespace NLegacySupport;

// The least that an element takes, with empty texts.
static constexpr qint64 leastElementBytes = 4 + 2 * 24 + 4 + 8 + 4 + 4;
static constexpr qint64 leastPrototypeBytes = 2 * 48 + 4 * 24 + 32 + 4 + 4 + 4 + 3 * 8 + 4;
/// Spheres hold lists of spheres, of which every deck has empty ones.
static constexpr int deepestList = 64;

/// Counts a list that is being read.
class CDepth
{
public:
    explicit CDepth(int& depth) : depth(depth) { ++depth; }
    ~CDepth() { --depth; }
    CDepth(const CDepth&) = delete;
    CDepth& operator=(const CDepth&) = delete;

private:
    int& depth;
};

void CDemReader::readPrototypeElement(SPrototypeElement& element)
{
    CInForm f = in();
    C3DVector dropped;
    CPrototypeElementList children; // no sphere is made of others
    f.point(element.position);      // m, in the particle's frame
    f.point(dropped);
    readPrototypeElementList(children);
    f.f64(element.contactRadius); // m
    f.dropI32();
    f.text(element.name);
    f.f64(element.physicalRadius, from(2, 4, 3), element.contactRadius); // m; before, a sphere has one radius
    f.point(dropped, from(2, 4, 41), C3DVector());
    if (!children.empty())
        reportOnce(eNotCarried, NLogTitle::legacyRead,
                   "spheres within the sphere \"" + shortened(element.name) + "\" of a particle dropped",
                   children.size(), shortened(element.name));
}

void CDemReader::readPrototypeElementList(CPrototypeElementList& elements)
{
    CInForm f = in();
    const CDepth depth(listDepth);
    if (listDepth > deepestList)
        throw std::runtime_error("byte " + std::to_string(stream->position()) + ": spheres within spheres, " +
                                 std::to_string(deepestList) + " deep");
    const quint32 count = f.count("sphere", leastElementBytes);
    admitMemory(quint64(count) * sizeof(SPrototypeElement), "spheres of particles");
    leaveIfStopped();
    QString key;
    for (quint32 i = 0; i < count; ++i) {
        f.text(key);
        readPrototypeElement(elements.emplace_back());
    }
}

static void forceTorque(CDemReader& reader, ForceTorque& force)
{
    CAxisAngle stored; // force, torque and the compressive force
    reader.readAxisAngle(stored);
    force = {stored.start.x, stored.start.y, stored.start.z, stored.end.x, stored.end.y, stored.end.z, stored.angle};
}

void CDemReader::readParticlePrototype(CParticlePrototype& p)
{
    CInForm f = in();
    ForceTorque droppedForce{};
    C3DVector dropped;
    forceTorque(*this, p.forceTorque);         // N, N m, N
    forceTorque(*this, p.unscaledForceTorque); // the same, not scaled
    f.point(p.position);                       // m
    f.point(p.velocity);                       // m/s
    readQuaternion(p.orientation);
    if (f.stores(from(2, 4, 29)))
        forceTorque(*this, p.externalForceTorque); // N, N m, N
    if (f.stores(from(2, 4, 56)))
        forceTorque(*this, droppedForce);
    f.point(p.angularVelocity); // rad/s
    f.point(p.inertia);         // kg m^2: Ixx, Iyy, Izz
    readPrototypeElementList(p.elements);
    f.text(p.materialName);
    f.i32(p.id);
    f.f64(p.volume); // before the mass, other than in a particle type
    f.f64(p.mass);   // kg
    f.f64(p.scale);  // what came before is of this scale, not of 1
    f.dropI32(0, below(2, 4, 19));
    f.text(p.name);
    f.dropF64(from(2, 4, 53)); // nothing uses it
    if (storesOldCharge(f)) {
        f.f64(p.charge); // C
        f.point(dropped);
    }
    if (f.stores(from(13, 0, 5))) {
        f.length("custom value", 8, p.customValues); // one property after the other, by their elements
        for (double& value : p.customValues)
            f.f64(value);
    }
}

void CDemCreatorDataReader::readParticlePrototypeExtras(CParticlePrototype&)
{
    CInForm f = in();
    CDomain dropped;
    f.dropI32(0, from(2, 4, 18)); // whether it has a domain
    if (f.stores(from(2, 4, 54)))
        dropped.read(*this);
}

void CDemCreatorDataReader::readParticlePrototypeList(CParticlePrototypeMap& prototypes)
{
    CInForm f = in();
    prototypes.clear();
    qint32 count = 0;
    f.i32(count);
    if (count > 0)
        stream->require(qint64(count) * (4 + leastPrototypeBytes), counted(count, "particle prototype"));
    beginRecords("prototypes");
    for (qint32 i = 0; i < count; ++i) {
        leaveIfStopped();
        const qint64 byte = stream->position();
        CParticlePrototype prototype;
        f.text(prototype.name); // the key; that of the record replaces it
        const QString key = prototype.name;
        readParticlePrototypeExtras(prototype);
        readParticlePrototype(prototype);
        reportRecord(prototype, byte);
        if (prototypes.contains(key))
            reportRepeated("particle prototype", key);
        prototypes.insert(key, prototype);
    }
}

void CDemTimestepDataReader::readLegacyParticlePrototypes(CParticlePrototypeRecords& records)
{
    CInForm f = in();
    f.dropI32(0, from(2, 4, 19));
    records.clear();
    const quint32 count = f.count("particle", leastPrototypeBytes);
    admitMemory(quint64(count) * sizeof(CParticlePrototype), "particles");
    records.reserve(count);
    stream->rowsAtWork = count;
    beginRecords("particles");
    for (quint32 i = 0; i < count; ++i) {
        const qint64 byte = stream->position();
        readParticlePrototype(records.emplace_back());
        reportRecord(records.back(), byte);
        leaveIfStopped();
    }
}

} // namespace NBrenmark
