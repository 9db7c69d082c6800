// The text of a timestep's root. The number of its model and the date of the writing belong to the storing, and have
// paths of their own.
#include "results/timestep_data.h"
#include "io/text/text_writer.h"
#include "model/creator_data.h"

namespace NBrenmark {

void CTextWriter::writeTimestepData(CTimestepData& t)
{
    writeFileVersionInfo(t);
    out.stored("creator", t.creatorData.storageIndex());
    out.stored("date", t.date);

    out.value("time", t.time);               // s, simulated
    out.value("elapsedTime", t.elapsedTime); // s, real
    out.value("runNumber", t.runNumber);
    out.value("isFull", t.isFull);
    out.value("timestepMask", t.timestepMask);
    out.value("particleMask", t.particleMask);
    out.value("geometryMask", t.geometryMask);
    // The state of geometry at this time is on the model's objects.
    covering(ETextPart::eState,
             [&] { out.group("geometryGroups", [&] { t.creatorData.geometryGroups.write(*this); }); });
    out.group("particles", [&] { t.particleTypes.write(*this); });
    out.group("contacts", [&] { t.contacts.write(*this); });
    out.group("collisions", [&] { t.collisions.write(*this); });
    out.group("bonds", [&] { t.bonds.write(*this); });
    out.group("energy", [&] { t.systemEnergy.write(*this); });
    out.group("removedParticles", [&] {
        for (auto entry = t.removedParticles.begin(); entry != t.removedParticles.end(); ++entry)
            out.group(NText::segment(entry.key()), [&] { out.here(entry.value()); });
    });
    t.simulationProperties.write(*this);
}

} // namespace NBrenmark
