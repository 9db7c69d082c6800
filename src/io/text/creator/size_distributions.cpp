// The text of size laws and of the shares of a mix.
#include "model/size_distributions.h"
#include "io/text/text_writer.h"

namespace NBrenmark {

void CTextWriter::writeParticleSizeDistributionMap(const CParticleSizeDistributionMap& map)
{
    for (const auto& [name, share] : map.entries) {
        out.group(NText::segment(name), [this, &share = share] {
            out.value("percentage", share.percentage); // 0 to 100, of the types of a material
            if (!share.distribution)
                return;
            out.value("kind", share.distribution->kindWord());
            share.distribution->write(*this);
        });
    }
}

// ---------------------------------------------------------------- laws

void CTextWriter::writeFixedDistribution(const CFixedDistribution& law) { out.value("value", law.value); }

void CTextWriter::writeRandomDistribution(const CRandomDistribution& law)
{
    out.value("min", law.min);
    out.value("max", law.max);
}

void CTextWriter::writeNormalDistribution(const CNormalDistribution& law)
{
    out.value("mean", law.mean);
    out.value("deviation", law.deviation);
    out.value("lowerCap", law.lowerCap);
    out.value("upperCap", law.upperCap);
    out.value("capped", law.capped);
}

void CTextWriter::writeLogNormalDistribution(const CLogNormalDistribution& law)
{
    writeNormalDistribution(law);
    out.value("logMean", law.logMean);
}

void CTextWriter::writeUserDefinedDistribution(const CUserDefinedDistribution& law)
{
    std::vector<std::array<double, 2>> bands;
    for (const auto& [size, share] : law.bands)
        bands.push_back({size, share});
    out.array("bands", bands);
}

// ---------------------------------------------------------------- laws of sizes

void CTextWriter::writeSizeDistributionBase(const ISizeDistribution& law)
{
    out.value("radiusScaling", law.radiusScaling);
}

void CTextWriter::writeFixedSizeDistribution(const CFixedSizeDistribution& law)
{
    writeFixedDistribution(law);
    writeSizeDistributionBase(law);
}

void CTextWriter::writeRandomSizeDistribution(const CRandomSizeDistribution& law)
{
    writeRandomDistribution(law);
    writeSizeDistributionBase(law);
}

void CTextWriter::writeNormalSizeDistribution(const CNormalSizeDistribution& law)
{
    writeNormalDistribution(law);
    writeSizeDistributionBase(law);
}

void CTextWriter::writeLogNormalSizeDistribution(const CLogNormalSizeDistribution& law)
{
    writeLogNormalDistribution(law);
    writeSizeDistributionBase(law);
}

void CTextWriter::writeUserDefinedSizeDistribution(const CUserDefinedSizeDistribution& law)
{
    writeUserDefinedDistribution(law);
    writeSizeDistributionBase(law);
}

} // namespace NBrenmark
