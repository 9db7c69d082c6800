// The size parameters of particle factories: each stores the law that it holds. All numbers are factors, of the radius
// of a particle type or, without radiusScaling, of its volume.
#include "io/dem/dem_reader.h"
#include "io/dem/dem_writer.h"
#include "model/factories/factory_size.h"

#include <cmath>

namespace NBrenmark {

template <class TForm, class TLaw>
static void fixedSizeForm(TForm&& f, TLaw& law)
{
    f.f64(law.value);
}
void CDemCreatorDataReader::readFixedFactorySize(CFixedFactorySize& size)
{
    fixedSizeForm(in(), size.sizeDistribution);
}
void CDemCreatorDataWriter::writeFixedFactorySize(const CFixedFactorySize& size)
{
    fixedSizeForm(out(), size.sizeDistribution);
}

template <class TForm, class TLaw>
static void randomSizeForm(TForm&& f, TLaw& law)
{
    f.f64(law.min);
    f.f64(law.max);
    f.flag(law.radiusScaling, from(27, 0, 0), true); // else of the volume
}
void CDemCreatorDataReader::readRandomFactorySize(CRandomFactorySize& size)
{
    randomSizeForm(in(), size.sizeDistribution);
}
void CDemCreatorDataWriter::writeRandomFactorySize(const CRandomFactorySize& size)
{
    randomSizeForm(out(), size.sizeDistribution);
}

// The caps of a law that has none yet.
static constexpr double leastSize = 1e-5;
static constexpr double greatestSize = 1.0;

template <class TForm, class TLaw>
static void normalSizeForm(TForm&& f, TLaw& law)
{
    const SGate gateCaps = from(2, 4, 28);
    f.f64(law.mean);
    f.f64(law.deviation);
    f.f64(law.lowerCap, gateCaps, leastSize);
    f.f64(law.upperCap, gateCaps, greatestSize);
    f.flag(law.capped, gateCaps, false);             // else the caps mean nothing
    f.flag(law.radiusScaling, from(2, 4, 49), true); // else of the volume
}
void CDemCreatorDataReader::readNormalFactorySize(CNormalFactorySize& size)
{
    CNormalSizeDistribution& law = size.sizeDistribution;
    normalSizeForm(in(), law);
    if (law.capped && std::abs(law.lowerCap) <= zeroLength && std::abs(law.upperCap) <= zeroLength) {
        law.lowerCap = leastSize; // no size would be left
        law.upperCap = greatestSize;
    }
}
void CDemCreatorDataWriter::writeNormalFactorySize(const CNormalFactorySize& size)
{
    normalSizeForm(out(), size.sizeDistribution);
}

template <class TForm, class TLaw>
static void logNormalSizeForm(TForm&& f, TLaw& law)
{
    f.f64(law.mean);
    f.f64(law.deviation);
    f.f64(law.lowerCap);
    f.f64(law.upperCap);
    f.flag(law.capped);        // else the caps mean nothing
    f.flag(law.logMean);       // mean and deviation are of the logarithm
    f.flag(law.radiusScaling); // else of the volume
}
void CDemCreatorDataReader::readLogNormalFactorySize(CLogNormalFactorySize& size)
{
    logNormalSizeForm(in(), size.sizeDistribution);
}
void CDemCreatorDataWriter::writeLogNormalFactorySize(const CLogNormalFactorySize& size)
{
    logNormalSizeForm(out(), size.sizeDistribution);
}

static constexpr qint64 bandBytes = 2 * 8;

void CDemCreatorDataReader::readUserDefinedFactorySize(CUserDefinedFactorySize& size)
{
    CInForm f = in();
    CUserDefinedSizeDistribution& law = size.sizeDistribution;
    f.flag(law.radiusScaling); // else of the volume
    const quint32 count = f.count("size band", bandBytes);
    law.bands.clear();
    for (quint32 i = 0; i < count; ++i) {
        double value = 0.0;
        f.f64(value);            // the size
        f.f64(law.bands[value]); // a size met before gets another share
    }
}

void CDemCreatorDataWriter::writeUserDefinedFactorySize(const CUserDefinedFactorySize& size)
{
    COutForm f = out();
    const CUserDefinedSizeDistribution& law = size.sizeDistribution;
    f.flag(law.radiusScaling); // else of the volume
    f.length("size band", bandBytes, law.bands);
    for (const auto& [value, share] : law.bands) {
        f.f64(value); // the size
        f.f64(share); // percent, that of all sizes up to this one
    }
}

} // namespace NBrenmark
