// The energy balance.

#include "io/hdf5/hdf5_reader.h"
#include "io/hdf5/hdf5_writer.h"

#include "results/energies.h"

namespace NBrenmark {

template <class TForm, class TEnergy>
static void timestepEnergyForm(TForm& f, TEnergy& e)
{
    f.group("TimestepEnergy/", [&] {
        f.attribute("kinetic energy", e.kinetic);                 // J
        f.attribute("potential energy", e.potential);             // J
        f.attribute("created particles", e.createdParticles);     // J
        f.attribute("destroyed particles", e.destroyedParticles); // J
        f.attribute("external", e.external);                      // J
        f.attribute("Loss From Contacts", e.lostThroughContacts); // J
        f.attribute("Loss From Capping", e.lostThroughCapping);   // J
    });
}

void CHdf5TimestepDataReader::readTimestepEnergy(CTimestepEnergy& e) { timestepEnergyForm(in(), e); }
void CHdf5TimestepDataWriter::writeTimestepEnergy(const CTimestepEnergy& e) { timestepEnergyForm(out(), e); }

template <class TForm, class TEnergy, class TVisit>
static void systemEnergyForm(TForm& f, TEnergy& e, TVisit&& visit)
{
    f.group("SystemEnergy/", [&] {
        f.attribute("energy", e.total);               // J
        f.attribute("potential energy", e.potential); // J
        f.attribute("kinetic energy", e.kinetic);     // J
        visit(e.cumulative);
    });
}

void CHdf5TimestepDataReader::readSystemEnergy(CSystemEnergy& e)
{
    systemEnergyForm(in(), e, [this](CTimestepEnergy& part) { part.read(*this); });
}

void CHdf5TimestepDataWriter::writeSystemEnergy(const CSystemEnergy& e)
{
    systemEnergyForm(out(), e, [this](const CTimestepEnergy& part) { part.write(*this); });
}

} // namespace NBrenmark
