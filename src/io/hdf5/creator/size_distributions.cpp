// The laws of sizes and magnitudes, and which share of the particles of a mix gets which size law. Numbers are factors
// of a size, or in the unit of what is drawn: m/s, rad/s, or that of a custom property.

#include "io/hdf5/hdf5_reader.h"
#include "io/hdf5/hdf5_writer.h"

#include "core/log.h"
#include "core/shortened.h"
#include "core/stop_flag.h"
#include "io/hdf5/link_names.h"
#include "model/size_distributions.h"

namespace NBrenmark {

using HDF5DATATYPES::STwoDoublesType;

// ---------------------------------------------------------------- laws

template <class TForm, class TLaw>
static void fixedForm(TForm& f, TLaw& law)
{
    f.attribute("value", law.value);
}

void CHdf5CreatorDataReader::readFixedDistribution(CFixedDistribution& law) { fixedForm(in(), law); }
void CHdf5CreatorDataWriter::writeFixedDistribution(const CFixedDistribution& law) { fixedForm(out(), law); }

template <class TForm, class TLaw>
static void randomForm(TForm& f, TLaw& law)
{
    f.attribute("min", law.min);
    f.attribute("max", law.max);
}

void CHdf5CreatorDataReader::readRandomDistribution(CRandomDistribution& law) { randomForm(in(), law); }
void CHdf5CreatorDataWriter::writeRandomDistribution(const CRandomDistribution& law) { randomForm(out(), law); }

template <class TForm, class TLaw>
static void normalForm(TForm& f, TLaw& law)
{
    f.attribute("mean", law.mean);
    f.attribute("standard deviation", law.deviation);
    f.attribute("lower cap", law.lowerCap);
    f.attribute("upper cap", law.upperCap);
    f.attribute("capped", law.capped); // else the caps mean nothing
}

void CHdf5CreatorDataReader::readNormalDistribution(CNormalDistribution& law) { normalForm(in(), law); }
void CHdf5CreatorDataWriter::writeNormalDistribution(const CNormalDistribution& law) { normalForm(out(), law); }

template <class TForm, class TLaw>
static void logNormalForm(TForm& f, TLaw& law)
{
    normalForm(f, law);
    f.attribute("log mean", law.logMean); // mean and deviation are of the logarithm
}

void CHdf5CreatorDataReader::readLogNormalDistribution(CLogNormalDistribution& law) { logNormalForm(in(), law); }
void CHdf5CreatorDataWriter::writeLogNormalDistribution(const CLogNormalDistribution& law)
{
    logNormalForm(out(), law);
}

static const char* const bandsName = "data";

void CHdf5CreatorDataReader::readUserDefinedDistribution(CUserDefinedDistribution& law)
{
    const auto rows = in().table<STwoDoublesType>(bandsName);
    law.bands.clear();
    for (const STwoDoublesType::Row& row : rows)
        law.bands[row.size] = row.share; // the share is percent, that of all sizes up to this one
    if (law.bands.size() < rows.size())
        report(eLost, NLogTitle::hdf5Read,
               "A size law has " + std::to_string(rows.size()) + " bands of " + std::to_string(law.bands.size()) +
                   " sizes: of equal sizes the later one stays.",
               rows.size() - law.bands.size());
}

void CHdf5CreatorDataWriter::writeUserDefinedDistribution(const CUserDefinedDistribution& law)
{
    std::vector<STwoDoublesType::Row> rows;
    for (const auto& [size, share] : law.bands)
        rows.push_back({size, share}); // the share is percent, that of all sizes up to this one
    out().table<STwoDoublesType>(bandsName, rows);
}

// ---------------------------------------------------------------- laws of sizes

template <class TForm, class TLaw>
static void sizeForm(TForm& f, TLaw& law)
{
    f.attribute("radius scaling", law.radiusScaling); // else of the volume
}

void CHdf5CreatorDataReader::readSizeDistributionBase(ISizeDistribution& law) { sizeForm(in(), law); }
void CHdf5CreatorDataWriter::writeSizeDistributionBase(const ISizeDistribution& law) { sizeForm(out(), law); }

void CHdf5CreatorDataReader::readFixedSizeDistribution(CFixedSizeDistribution& law)
{
    readFixedDistribution(law);
    readSizeDistributionBase(law);
}

void CHdf5CreatorDataWriter::writeFixedSizeDistribution(const CFixedSizeDistribution& law)
{
    writeFixedDistribution(law);
    writeSizeDistributionBase(law);
}

void CHdf5CreatorDataReader::readRandomSizeDistribution(CRandomSizeDistribution& law)
{
    readRandomDistribution(law);
    readSizeDistributionBase(law);
}

void CHdf5CreatorDataWriter::writeRandomSizeDistribution(const CRandomSizeDistribution& law)
{
    writeRandomDistribution(law);
    writeSizeDistributionBase(law);
}

void CHdf5CreatorDataReader::readNormalSizeDistribution(CNormalSizeDistribution& law)
{
    readNormalDistribution(law);
    readSizeDistributionBase(law);
}

void CHdf5CreatorDataWriter::writeNormalSizeDistribution(const CNormalSizeDistribution& law)
{
    writeNormalDistribution(law);
    writeSizeDistributionBase(law);
}

void CHdf5CreatorDataReader::readLogNormalSizeDistribution(CLogNormalSizeDistribution& law)
{
    readLogNormalDistribution(law);
    readSizeDistributionBase(law);
}

void CHdf5CreatorDataWriter::writeLogNormalSizeDistribution(const CLogNormalSizeDistribution& law)
{
    writeLogNormalDistribution(law);
    writeSizeDistributionBase(law);
}

void CHdf5CreatorDataReader::readUserDefinedSizeDistribution(CUserDefinedSizeDistribution& law)
{
    readUserDefinedDistribution(law);
    readSizeDistributionBase(law);
}

void CHdf5CreatorDataWriter::writeUserDefinedSizeDistribution(const CUserDefinedSizeDistribution& law)
{
    writeUserDefinedDistribution(law);
    writeSizeDistributionBase(law);
}

// ---------------------------------------------------------------- shares of a mix

static const char* const shareName = "percentage";
static const char* const lawKindName = "type";

void CHdf5CreatorDataReader::readParticleSizeDistributionMap(CParticleSizeDistributionMap& map)
{
    map.clear();
    in().group("SizeDistributions/", [&] {
        in().children([&](const QString& particleType) {
            double percentage = 0.0;
            QString kind;
            in().attribute(shareName, percentage); // 0 to 100, of the types of a material
            if (!in().attribute(lawKindName, kind))
                return;
            std::unique_ptr<ISizeDistribution> law = CSizeDistributionRegistry::instance().create(kind);
            if (law == nullptr) {
                report(eLost, NLogTitle::hdf5Read,
                       "The size law of \"" + shortened(particleType) + "\" is skipped: no law \"" + shortened(kind) +
                           "\" is known.",
                       1, shortened(particleType));
                return;
            }
            law->read(*this);
            map.add(particleType.toStdString(), percentage, law);
        });
        leaveIfStopped();
    });
}

void CHdf5CreatorDataWriter::writeParticleSizeDistributionMap(const CParticleSizeDistributionMap& map)
{
    out().group("SizeDistributions/", [&] {
        CLinkNames names("particle type with a size law", "");
        for (const auto& entry : map.entries) {
            const SParticleDistribution& share = entry.second;
            if (isLawWithoutPlace(entry.first, share.distribution.get())) {
                report(eNotCarried, NLogTitle::hdf5Write,
                       "Particle type \"" + shortened(entry.first) +
                           "\" has no size law in the deck: an HDF5 group can't have its name. No factory feeds it.",
                       1, shortened(entry.first));
                continue;
            }
            out().group(names.next(QString::fromStdString(entry.first)), [&] {
                out().attribute(shareName, share.percentage); // 0 to 100, of the types of a material
                out().attribute(lawKindName, share.distribution ? share.distribution->kindWord() : QString());
                if (share.distribution)
                    share.distribution->write(*this);
            });
        }
    });
}

} // namespace NBrenmark
