// The text of the energy balance.
#include "results/energies.h"
#include "io/text/text_writer.h"

namespace NBrenmark {

void CTextWriter::writeSystemEnergy(const CSystemEnergy& e)
{
    out.value("total", e.total); // J
    out.value("potential", e.potential);
    out.value("kinetic", e.kinetic);
    out.group("cumulative", [&] { e.cumulative.write(*this); });
}

void CTextWriter::writeTimestepEnergy(const CTimestepEnergy& e)
{
    out.value("kinetic", e.kinetic);
    out.value("potential", e.potential);
    out.value("createdParticles", e.createdParticles);
    out.value("destroyedParticles", e.destroyedParticles);
    out.value("external", e.external);
    out.value("lostThroughContacts", e.lostThroughContacts);
    out.value("lostThroughCapping", e.lostThroughCapping);
}

} // namespace NBrenmark
