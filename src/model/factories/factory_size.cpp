// Draws sizes. A factory that is told the next size by name gives that one once.
#include "model/factories/factory_size.h"

#include "platform/random.h"
#include "visitors/file_visitor_reader.h"
#include "visitors/file_visitor_writer.h"

namespace NBrenmark {

template <>
const CFactorySizeRegistry& CFactorySizeRegistry::instance()
{
    static const CFactorySizeRegistry registry =
        of<CNormalFactorySize, CFixedFactorySize, CRandomFactorySize, CLogNormalFactorySize, CUserDefinedFactorySize>();
    return registry;
}

template <class TKind, class TDistribution, class TRecord>
double CPositiveFactorySizeOf<TKind, TDistribution, TRecord>::draw() const
{
    // A law without any positive number must not hang its caller; one that has some gives one of them
    // long before the random source has come round so often.
    constexpr int mostDraws = 32 * (greatestRandomNumber + 1);
    double size = this->sizeDistribution.sample();
    for (int draws = 1; !(size > zeroLength) && draws < mostDraws; ++draws)
        size = this->sizeDistribution.sample();
    return size;
}

template class CPositiveFactorySizeOf<CRandomFactorySize, CRandomSizeDistribution, CRandomSizeParamData>;
template class CPositiveFactorySizeOf<CNormalFactorySize, CNormalSizeDistribution, CNormalSizeParamData>;
template class CPositiveFactorySizeOf<CLogNormalFactorySize, CLogNormalSizeDistribution, CLogNormalSizeParamData>;

// ---------------------------------------------------------------- as records

/// The fields that the records of the normal laws share.
template <class TRecord>
static void takeNormal(CNormalDistribution& law, const TRecord& data)
{
    law.mean = data.mean;
    law.deviation = data.deviation;
    law.upperCap = data.upperCap;
    law.capped = data.capped;
    law.lowerCap = data.upperCap; // so that the setter compares with the new cap of the other side
    law.setLowerCap(data.lowerCap);
}

template <class TRecord>
static TRecord normalRecord(const CNormalDistribution& law, bool radiusScaling)
{
    TRecord data;
    data.mean = law.mean;
    data.deviation = law.deviation;
    data.lowerCap = law.lowerCap;
    data.upperCap = law.upperCap;
    data.capped = law.capped;
    data.radiusScaling = radiusScaling;
    return data;
}

void CFixedFactorySize::takeRecord(const CFixedSizeParamData& data)
{
    sizeDistribution.radiusScaling = data.radiusScaling;
    sizeDistribution.value = data.value;
}

CFixedSizeParamData CFixedFactorySize::record() const
{
    CFixedSizeParamData data;
    data.radiusScaling = sizeDistribution.radiusScaling;
    data.value = sizeDistribution.value;
    return data;
}

void CRandomFactorySize::takeRecord(const CRandomSizeParamData& data)
{
    sizeDistribution.radiusScaling = data.radiusScaling;
    sizeDistribution.min = data.min;
    sizeDistribution.max = data.max;
}

CRandomSizeParamData CRandomFactorySize::record() const
{
    CRandomSizeParamData data;
    data.radiusScaling = sizeDistribution.radiusScaling;
    data.min = sizeDistribution.min;
    data.max = sizeDistribution.max;
    return data;
}

void CNormalFactorySize::takeRecord(const CNormalSizeParamData& data)
{
    sizeDistribution.radiusScaling = data.radiusScaling;
    takeNormal(sizeDistribution, data);
}

CNormalSizeParamData CNormalFactorySize::record() const
{
    return normalRecord<CNormalSizeParamData>(sizeDistribution, sizeDistribution.radiusScaling);
}

CLogNormalFactorySize::CLogNormalFactorySize()
{
    sizeDistribution.radiusScaling = false;
    sizeDistribution.logMean = true;
    sizeDistribution.lowerCap = -10.0;
    sizeDistribution.upperCap = 2.0;
}

void CLogNormalFactorySize::takeRecord(const CLogNormalSizeParamData& data)
{
    sizeDistribution.radiusScaling = data.radiusScaling;
    sizeDistribution.logMean = data.logMean;
    takeNormal(sizeDistribution, data);
}

CLogNormalSizeParamData CLogNormalFactorySize::record() const
{
    CLogNormalSizeParamData data =
        normalRecord<CLogNormalSizeParamData>(sizeDistribution, sizeDistribution.radiusScaling);
    data.logMean = sizeDistribution.logMean;
    return data;
}

void CUserDefinedFactorySize::takeRecord(const CUserDefinedSizeParamData& data)
{
    sizeDistribution.radiusScaling = data.radiusScaling;
    sizeDistribution.setPercentages(data.percentages);
}

CUserDefinedSizeParamData CUserDefinedFactorySize::record() const
{
    CUserDefinedSizeParamData data;
    data.radiusScaling = sizeDistribution.radiusScaling;
    data.percentages = sizeDistribution.percentages();
    return data;
}

// ---------------------------------------------------------------- bands

CFactoryAccounting& CUserDefinedFactorySize::bandAccountingFor(double size, bool sizeIsRadius)
{
    const bool bandsAreVolumes = !sizeDistribution.radiusScaling;
    return bandAccounting[sizeIsRadius && bandsAreVolumes ? size * size * size : size];
}

void CUserDefinedFactorySize::startRate()
{
    for (const auto& [size, percentage] : sizeDistribution.bands)
        bandAccounting[size].startRate();
}

// ---------------------------------------------------------------- visitors

void CFixedFactorySize::read(IFileVisitorReader& v) { v.readFixedFactorySize(*this); }

void CFixedFactorySize::write(IFileVisitorWriter& v) const { v.writeFixedFactorySize(*this); }

void CRandomFactorySize::read(IFileVisitorReader& v) { v.readRandomFactorySize(*this); }

void CRandomFactorySize::write(IFileVisitorWriter& v) const { v.writeRandomFactorySize(*this); }

void CNormalFactorySize::read(IFileVisitorReader& v) { v.readNormalFactorySize(*this); }

void CNormalFactorySize::write(IFileVisitorWriter& v) const { v.writeNormalFactorySize(*this); }

void CLogNormalFactorySize::read(IFileVisitorReader& v) { v.readLogNormalFactorySize(*this); }

void CLogNormalFactorySize::write(IFileVisitorWriter& v) const { v.writeLogNormalFactorySize(*this); }

void CUserDefinedFactorySize::read(IFileVisitorReader& v) { v.readUserDefinedFactorySize(*this); }

void CUserDefinedFactorySize::write(IFileVisitorWriter& v) const { v.writeUserDefinedFactorySize(*this); }

} // namespace NBrenmark
