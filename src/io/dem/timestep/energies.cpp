// The energy balance of a timestep.
#include "results/energies.h"

#include "io/dem/dem_reader.h"
#include "io/dem/dem_writer.h"

namespace NBrenmark {

template <class TForm, class TEnergy>
static void energyForm(TForm&& f, TEnergy& e)
{
    f.f64(e.kinetic);                                 // J
    f.f64(e.potential);                               // J
    f.f64(e.createdParticles);                        // J
    f.f64(e.destroyedParticles);                      // J
    f.f64(e.external);                                // J
    f.f64(e.lostThroughContacts);                     // J
    f.f64(e.lostThroughCapping, from(2, 4, 55), 0.0); // J
}
void CDemTimestepDataReader::readTimestepEnergy(CTimestepEnergy& e) { energyForm(in(), e); }
void CDemTimestepDataWriter::writeTimestepEnergy(const CTimestepEnergy& e) { energyForm(out(), e); }

template <class TForm, class TEnergy>
static void systemEnergyForm(TForm&& f, TEnergy& e)
{
    energyForm(f, e.cumulative);
    f.f64(e.total);     // J
    f.f64(e.potential); // J
    f.f64(e.kinetic);   // J
}
void CDemTimestepDataReader::readSystemEnergy(CSystemEnergy& e) { systemEnergyForm(in(), e); }
void CDemTimestepDataWriter::writeSystemEnergy(const CSystemEnergy& e) { systemEnergyForm(out(), e); }

} // namespace NBrenmark
