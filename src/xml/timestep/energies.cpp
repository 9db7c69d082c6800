// The energy balance: "energy", and in it "cumulative_energy". All in J.
#include "results/energies.h"
#include "xml/serialisers.h"

namespace NBrenmark {

static const char* const energyTag = "energy";
static const char* const cumulativeTag = "cumulative_energy";

template <class TForm, class TEnergy>
static void systemEnergyForm(TForm& f, TEnergy& e)
{
    f.attribute("total", e.total);
    f.attribute("kinetic", e.kinetic);
    f.attribute("potential", e.potential);
}

template <class TForm, class TEnergy>
static void timestepEnergyForm(TForm& f, TEnergy& e)
{
    f.attribute("kinetic", e.kinetic);
    f.attribute("potential", e.potential);
    f.attribute("new_particles", e.createdParticles);
    f.attribute("destroyed_particles", e.destroyedParticles);
    f.attribute("external", e.external);
    f.attribute("lost_through_contacts", e.lostThroughContacts);
    f.attribute("lost_through_capping", e.lostThroughCapping);
}

void CXmlReader::readSystemEnergy(CSystemEnergy& e) { systemEnergyForm(in(), e); }
void CXmlWriter::writeSystemEnergy(const CSystemEnergy& e)
{
    systemEnergyForm(out(), e);
    out().element(cumulativeTag, [&] { e.cumulative.write(*this); });
}

void CXmlReader::readTimestepEnergy(CTimestepEnergy& e) { timestepEnergyForm(in(), e); }
void CXmlWriter::writeTimestepEnergy(const CTimestepEnergy& e) { timestepEnergyForm(out(), e); }

namespace {

class CEnergiesPart : public CXmlPart<CSystemEnergy>
{
public:
    using CXmlPart::CXmlPart;

    bool startDomElement(const QString&, const CXmlAttributes& attributes, const CXmlIoOptions& options) override
    {
        if (attributes.is(energyTag)) {
            fromDomElement(attributes, options);
            return true;
        }
        if (!attributes.is(cumulativeTag))
            return false;
        CXmlReader reader(attributes, options);
        object.cumulative.read(reader);
        return true;
    }
};

} // namespace

std::unique_ptr<CXmlSerialiser> energiesPart(CSystemEnergy& energy) { return std::make_unique<CEnergiesPart>(energy); }

} // namespace NBrenmark
