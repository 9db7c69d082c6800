// The energy balance of a timestep.
#include "results/energies.h"

#include "io/dem/dem_reader.h"
#include "io/dem/dem_writer.h"

namespace NBrenmark {

template <class TForm, class TEnergy>
static void energyForm(TForm&& f, TEnergy& e)
{
    f.f64(e.kinetic);
    f.f64(e.potential);
    f.f64(e.createdParticles);
    f.f64(e.destroyedParticles);
    f.f64(e.external);
    f.f64(e.lostThroughContacts);
    f.f64(e.lostThroughCapping, from(2, 4, 55), 0.0);
}
void CDemTimestepDataReader::readTimestepEnergy(CTimestepEnergy& e) { energyForm(in(), e); }
void CDemTimestepDataWriter::writeTimestepEnergy(const CTimestepEnergy& e) { energyForm(out(), e); }

template <class TForm, class TEnergy>
static void systemEnergyForm(TForm&& f, TEnergy& e)
{
    energyForm(f, e.cumulative);
    f.f64(e.total);
    f.f64(e.potential);
    f.f64(e.kinetic);
}
void CDemTimestepDataReader::readSystemEnergy(CSystemEnergy& e) { systemEnergyForm(in(), e); }
void CDemTimestepDataWriter::writeSystemEnergy(const CSystemEnergy& e) { systemEnergyForm(out(), e); }

} // namespace NBrenmark
