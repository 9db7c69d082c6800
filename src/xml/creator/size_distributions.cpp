// The shares of a mix, a "particle_size_distribution" for each particle type, and their size laws.
#include "model/size_distributions.h"
#include "core/log.h"
#include "core/shortened.h"
#include "xml/serialisers.h"

namespace NBrenmark {

// ---------------------------------------------------------------- laws of sizes: scales of the radius or of the volume

template <class TForm, class TLaw>
static void scalingForm(TForm& f, TLaw& law)
{
    f.flag("radius_scaling", law.radiusScaling);
}

template <class TForm, class TLaw>
static void fixedLawForm(TForm& f, TLaw& law)
{
    scalingForm(f, law);
    f.attribute("ratio", law.value);
}

template <class TForm, class TLaw>
static void randomLawForm(TForm& f, TLaw& law)
{
    scalingForm(f, law);
    f.attribute("min_val", law.min);
    f.attribute("max_val", law.max);
}

template <class TForm, class TLaw>
static void capsForm(TForm& f, TLaw& law)
{
    f.flag("capped", law.capped);
    f.attribute("lower_cap", law.lowerCap);
    f.attribute("upper_cap", law.upperCap);
}

template <class TForm, class TLaw>
static void normalLawForm(TForm& f, TLaw& law)
{
    scalingForm(f, law);
    f.attribute("mean", law.mean);
    f.attribute("std_dev", law.deviation);
    capsForm(f, law);
}

template <class TForm, class TLaw>
static void logNormalLawForm(TForm& f, TLaw& law)
{
    scalingForm(f, law);
    f.attribute("mean", law.mean);
    f.attribute("std_dev", law.deviation);
    f.flag("log_lin", law.logMean);
    capsForm(f, law);
}

void CXmlReader::readFixedSizeDistribution(CFixedSizeDistribution& law) { fixedLawForm(in(), law); }
void CXmlWriter::writeFixedSizeDistribution(const CFixedSizeDistribution& law) { fixedLawForm(out(), law); }

void CXmlReader::readRandomSizeDistribution(CRandomSizeDistribution& law) { randomLawForm(in(), law); }
void CXmlWriter::writeRandomSizeDistribution(const CRandomSizeDistribution& law) { randomLawForm(out(), law); }

void CXmlReader::readNormalSizeDistribution(CNormalSizeDistribution& law) { normalLawForm(in(), law); }
void CXmlWriter::writeNormalSizeDistribution(const CNormalSizeDistribution& law) { normalLawForm(out(), law); }

void CXmlReader::readLogNormalSizeDistribution(CLogNormalSizeDistribution& law) { logNormalLawForm(in(), law); }
void CXmlWriter::writeLogNormalSizeDistribution(const CLogNormalSizeDistribution& law) { logNormalLawForm(out(), law); }

/// The bands come in elements of their own, in place of the one that a new law has.
void CXmlReader::readUserDefinedSizeDistribution(CUserDefinedSizeDistribution& law)
{
    if (!takes("band")) {
        scalingForm(in(), law);
        law.bands.clear();
        return;
    }
    law.bands[attributes.number("scale")] = attributes.number("value");
}

void CXmlWriter::writeUserDefinedSizeDistribution(const CUserDefinedSizeDistribution& law)
{
    scalingForm(out(), law);
    for (const auto& [size, share] : law.bands)
        out().element("band", [this, scale = size, value = share] {
            out().attribute("scale", scale);
            out().attribute("value", value); // cumulative, 0 to 100
        });
}

// ---------------------------------------------------------------- shares of a mix

static const char* const distributionsTag = "size_distrbution"; // as every document spells it
static const char* const shareTag = "particle_size_distribution";
static const char* const lawTag = "size_distribution_params";

void CXmlWriter::writeParticleSizeDistributionMap(const CParticleSizeDistributionMap& map)
{
    out().element(distributionsTag, [&] {
        for (const auto& entry : map.entries)
            out().element(shareTag, [&] {
                const SParticleDistribution& share = entry.second;
                out().attribute("percentage", share.percentage);
                out().attribute("type", share.distribution ? share.distribution->kindWord() : QString());
                out().attribute("name", entry.first);
                if (share.distribution)
                    out().element(lawTag, [&] { share.distribution->write(*this); });
            });
    });
}

namespace {

class CSizeDistributionsPart : public CXmlPart<CParticleSizeDistributionMap>
{
public:
    using CXmlPart::CXmlPart;

    bool startDomElement(const QString&, const CXmlAttributes& attributes, const CXmlIoOptions& options) override
    {
        if (attributes.is(distributionsTag)) {
            current = nullptr;
            object.clear();
            return true;
        }
        if (attributes.is(shareTag)) {
            beginShare(attributes);
            return true;
        }
        const bool isBand = attributes.is("band");
        if (!isShareOpen || (!isBand && !attributes.is(lawTag))) // factories have laws as well
            return false;
        CXmlReader reader(attributes, options);
        if (current != nullptr && (!isBand || dynamic_cast<CUserDefinedSizeDistribution*>(current) != nullptr))
            current->read(reader);
        return true;
    }
    void endDomElement(const QString& tagName, const CXmlIoOptions&) override
    {
        isShareOpen = isShareOpen && tagName != QLatin1String(shareTag);
    }

private:
    void beginShare(const CXmlAttributes& attributes)
    {
        const QString name = attributes.text("name");
        const QString kind = attributes.text("type");
        current = nullptr;
        isShareOpen = true;
        std::unique_ptr<ISizeDistribution> law = CSizeDistributionRegistry::instance().create(kind);
        ISizeDistribution* const made = law.get();
        attributes.know("percentage");
        if (made == nullptr)
            report(eLost, NLogTitle::xmlImport,
                   "The size law of \"" + shortened(name) + "\" is skipped: no law \"" + shortened(kind) +
                       "\" is known.",
                   1, shortened(name));
        else if (object.add(name.toStdString(), attributes.number("percentage"), law))
            current = made;
        else
            report(eLost, NLogTitle::xmlImport,
                   "Two size laws are of \"" + shortened(name) + "\": the first one stays.", 1, shortened(name));
    }

    ISizeDistribution* current = nullptr; ///< that the next elements are of; not owned
    bool isShareOpen = false;
};

} // namespace

std::unique_ptr<CXmlSerialiser> sizeDistributionsPart(CParticleSizeDistributionMap& distributions)
{
    return std::make_unique<CSizeDistributionsPart>(distributions);
}

} // namespace NBrenmark
