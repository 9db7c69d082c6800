// The text of particle types, and of all particles by slot.
#include "model/particle_types.h"
#include "io/text/held_by_property.h"
#include "io/text/text_writer.h"

#include <algorithm>

namespace NBrenmark {

/// The ids with every free slot as 0: which number below 1 a free slot holds only says in what order
/// the slots were released, and no family keeps that.
static std::vector<qint32> idsWithoutLinks(const std::vector<qint32>& ids)
{
    std::vector<qint32> plain(ids);
    for (qint32& id : plain)
        id = std::max(id, 0);
    return plain;
}

void CTextWriter::writeParticleTypes(const CParticleTypes& types)
{
    out.value("maxId", types.maxId);
    CListSegments segments;
    qint32 index = 0;
    for (const auto& type : types.types) {
        out.group(segments.next(type->name), [&] {
            out.value("index", index++);
            type->write(*this);
        });
    }
}

void CTextWriter::writeParticleType(const CParticleType& t)
{
    out.value("name", t.displayName);
    out.value("materialName", t.materialName);
    out.value("surfaceBased", t.surfaceBased);
    out.value("autoCenterParticle", t.autoCenterParticle);
    out.value("templateName", t.templateName);
    out.value("autoProperties", t.autoProperties);
    out.value("rawMass", t.rawMass);       // kg, at scale 1
    out.value("rawVolume", t.rawVolume);   // m^3
    out.value("rawInertia", t.rawInertia); // kg m^2: Ixx, Iyy, Izz
    out.value("calculateProperties", t.calculateProperties);
    out.group("spheres", [&] {
        for (size_t i = 0; i < t.spheres.size(); ++i) {
            out.group(std::to_string(i), [&, &sphere = t.spheres[i]] {
                out.value("name", sphere.name);
                out.value("position", sphere.position);             // m, in the particle's frame
                out.value("contactRadius", sphere.contactRadius);   // m
                out.value("physicalRadius", sphere.physicalRadius); // m
            });
        }
    });

    // What follows from the rest isn't shown: the flags of live slots, the places of single spheres,
    // the copy of the model's gravity. The word of stored fields is the file's: an array that the file
    // doesn't hold is zero.
    out.stored("dataMask", t.dataMask);
    out.value("slots", t.slotCount());
    out.value("particles", t.liveCount());
    out.array("ids", idsWithoutLinks(t.ids));
    out.array("scale", t.scale);                             // factor of all lengths
    out.array("velocity", t.velocity);                       // m/s
    out.array("position", t.position);                       // m
    out.array("orientation", t.orientation);                 // w, x, y, z
    out.array("angularVelocity", t.angularVelocity);         // rad/s
    out.array("forceTorque", t.forceTorque);                 // N, N m, N
    out.array("unscaledForceTorque", t.unscaledForceTorque); // the same, not scaled
    out.array("externalForceTorque", t.externalForceTorque); // N, N m, N
    out.array("creationTime", t.creationTime);               // s

    // Old decks store charges beside the particles. They live on as custom properties; those that
    // didn't find one are shown here.
    const CParticleTypeElectrostatic& e = t.electrostatic;
    if ((t.dataMask & eCharge) && !heldByProperty(t.customProperties, "Charge", e.charge))
        out.array("charge", e.charge); // C
    if ((t.dataMask & eElectrostaticForce) &&
        !heldByProperty(t.customProperties, "Electrostatic Force", e.electrostaticForce))
        out.array("electrostaticForce", e.electrostaticForce); // N

    t.customProperties.write(*this);
}

} // namespace NBrenmark
