// The parameters of particle factories: an element for each, whose "type" is the word of its kind.

#include "core/counted.h"
#include "core/log.h"
#include "model/factories/factory_angular_velocity.h"
#include "model/factories/factory_orientation.h"
#include "model/factories/factory_position.h"
#include "model/factories/factory_size.h"
#include "model/factories/factory_type.h"
#include "model/factories/factory_velocity.h"
#include "xml/serialisers.h"

#include <array>
#include <cmath>

namespace NBrenmark {

// ---------------------------------------------------------------- velocities, m/s, and angular velocities, rad/s

template <class TForm, class TParam>
static void fixedVectorForm(TForm& f, TParam& p)
{
    f.xyz("", p.value);
}

template <class TForm, class TParam>
static void randomVectorForm(TForm& f, TParam& p)
{
    f.attribute("min", p.magnitude.min);
    f.attribute("max", p.magnitude.max);
}

template <class TForm, class TParam>
static void normalVectorForm(TForm& f, TParam& p)
{
    f.attribute("mean", p.magnitude.mean);
    f.attribute("deviation", p.magnitude.deviation);
    f.xyz("", p.direction);
}

template <class TForm, class TParam>
static void linearVectorForm(TForm& f, TParam& p)
{
    f.xyz("start_", p.startVelocity);
    f.xyz("end_", p.endVelocity);
}

template <class TForm, class TParam>
static void sprayForm(TForm& f, TParam& p)
{
    normalVectorForm(f, p);
    f.attribute("angle", p.sprayAngle); // rad
}

void CXmlReader::readFixedFactoryVelocity(CFixedFactoryVelocity& p) { fixedVectorForm(in(), p); }
void CXmlWriter::writeFixedFactoryVelocity(const CFixedFactoryVelocity& p) { fixedVectorForm(out(), p); }
void CXmlReader::readRandomFactoryVelocity(CRandomFactoryVelocity& p) { randomVectorForm(in(), p); }
void CXmlWriter::writeRandomFactoryVelocity(const CRandomFactoryVelocity& p) { randomVectorForm(out(), p); }
void CXmlReader::readNormalFactoryVelocity(CNormalFactoryVelocity& p) { normalVectorForm(in(), p); }
void CXmlWriter::writeNormalFactoryVelocity(const CNormalFactoryVelocity& p) { normalVectorForm(out(), p); }
void CXmlReader::readLinearFactoryVelocity(CLinearFactoryVelocity& p) { linearVectorForm(in(), p); }
void CXmlWriter::writeLinearFactoryVelocity(const CLinearFactoryVelocity& p) { linearVectorForm(out(), p); }
void CXmlReader::readSprayFactoryVelocity(CSprayFactoryVelocity& p) { sprayForm(in(), p); }
void CXmlWriter::writeSprayFactoryVelocity(const CSprayFactoryVelocity& p) { sprayForm(out(), p); }

void CXmlReader::readFixedFactoryAngVel(CFixedFactoryAngVel& p) { fixedVectorForm(in(), p); }
void CXmlWriter::writeFixedFactoryAngVel(const CFixedFactoryAngVel& p) { fixedVectorForm(out(), p); }
void CXmlReader::readRandomFactoryAngVel(CRandomFactoryAngVel& p) { randomVectorForm(in(), p); }
void CXmlWriter::writeRandomFactoryAngVel(const CRandomFactoryAngVel& p) { randomVectorForm(out(), p); }
void CXmlReader::readNormalFactoryAngVel(CNormalFactoryAngVel& p) { normalVectorForm(in(), p); }
void CXmlWriter::writeNormalFactoryAngVel(const CNormalFactoryAngVel& p) { normalVectorForm(out(), p); }
void CXmlReader::readLinearFactoryAngVel(CLinearFactoryAngVel& p) { linearVectorForm(in(), p); }
void CXmlWriter::writeLinearFactoryAngVel(const CLinearFactoryAngVel& p) { linearVectorForm(out(), p); }

// ---------------------------------------------------------------- orientation, type

/// The matrix, its elements in the order of documents: neither by rows nor by columns.
template <class TForm, class TMatrix>
static void orientationForm(TForm& f, TMatrix& matrix)
{
    struct SElement
    {
        const char* name;
        int place; ///< row-major
    };
    constexpr std::array<SElement, 9> elements = {{{"orient_xx", 0},
                                                   {"orient_xy", 1},
                                                   {"orient_yx", 3},
                                                   {"orient_yy", 4},
                                                   {"orient_xz", 2},
                                                   {"orient_yz", 5},
                                                   {"orient_zx", 6},
                                                   {"orient_zy", 7},
                                                   {"orient_zz", 8}}};
    for (const SElement& element : elements)
        f.attribute(element.name, matrix.data()[element.place]);
}

void CXmlReader::readFixedFactoryOrientation(CFixedFactoryOrientation& p) { orientationForm(in(), p.orientation); }
void CXmlWriter::writeFixedFactoryOrientation(const CFixedFactoryOrientation& p)
{
    orientationForm(out(), p.orientation);
}

template <class TForm, class TParam>
static void fixedTypeForm(TForm& f, TParam& p)
{
    f.attribute("name", p.names[0]);
}

template <class TForm, class TParam>
static void binaryTypeForm(TForm& f, TParam& p)
{
    f.attribute("nameA", p.names[0]);
    f.attribute("nameB", p.names[1]);
}

/// A file may hold another number of names.
void CXmlReader::readFixedFactoryType(CFixedFactoryType& p) { fixedTypeForm(in(), p); }
void CXmlWriter::writeFixedFactoryType(const CFixedFactoryType& p)
{
    CFixedFactoryType whole(p);
    whole.names.resize(1);
    fixedTypeForm(out(), std::as_const(whole));
}

void CXmlReader::readBinaryFactoryType(CBinaryFactoryType& p) { binaryTypeForm(in(), p); }
void CXmlWriter::writeBinaryFactoryType(const CBinaryFactoryType& p)
{
    CBinaryFactoryType whole(p);
    whole.names.resize(2);
    binaryTypeForm(out(), std::as_const(whole));
}

// ---------------------------------------------------------------- position

static const char* const walkWord = "random_walk";

template <class TForm, class TParam>
static void randomPositionForm(TForm& f, TParam& p)
{
    if (p.style == CRandomFactoryPosition::eRandomWalk) {
        f.attribute("maximum_angle", p.maxAngle); // rad
        f.attribute("mult_factor", p.multiFactor);
    }
    f.attribute("density_factor", p.densityFactor);
}

void CXmlReader::readRandomFactoryPosition(CRandomFactoryPosition& p)
{
    attributes.know("maximum_angle");
    attributes.know("mult_factor");
    const bool walks = attributes.text("style") == QLatin1String(walkWord);
    p.style = walks ? CRandomFactoryPosition::eRandomWalk : CRandomFactoryPosition::eRandom;
    randomPositionForm(in(), p);
}

void CXmlWriter::writeRandomFactoryPosition(const CRandomFactoryPosition& p)
{
    out().word("style", p.style == CRandomFactoryPosition::eRandomWalk, walkWord, "random");
    randomPositionForm(out(), p);
}

template <class TForm, class TRecord>
static void latticeForm(TForm& f, TRecord& record)
{
    f.xyz("start_", record.start);                    // m
    f.attribute("separation1", record.separations.x); // m
    f.attribute("separation2", record.separations.y); // m
    f.attribute("separation3", record.separations.z); // m
    f.xyz("rotation_", record.rotation);              // rad
}

static void readLattice(CXmlFormReader& in, C3DLattice& lattice)
{
    C3DLatticePositionParamData record;
    latticeForm(in, record);
    lattice.setParamData(record);
}

/// The lengths of the axes: which way they go follows from the rotation. A length that a turn has rounded is written as
/// the shorter number that it comes from, if that gives the same axis again.
static void writeLattice(CXmlOutput& out, const C3DLattice& lattice)
{
    constexpr int digitsBeforeTurn = 15;
    const auto shorter = [](double length) { return QString::number(length, 'g', digitsBeforeTurn).toDouble(); };
    const auto same = [](const C3DVector& v, const C3DVector& w) { return v.x == w.x && v.y == w.y && v.z == w.z; };
    C3DLatticePositionParamData record;
    record.rotation = lattice.rotation;
    record.start = lattice.start;
    const C3DVector lengths(lattice.axisA.length(), lattice.axisB.length(), lattice.axisC.length());
    record.separations = C3DVector(shorter(lengths.x), shorter(lengths.y), shorter(lengths.z));
    const std::unique_ptr<IFactoryPosition> clone = lattice.clone();
    clone->setParamData(record);
    const auto& remade = dynamic_cast<const C3DLattice&>(*clone);
    if (!same(remade.axisA, lattice.axisA))
        record.separations.x = lengths.x;
    if (!same(remade.axisB, lattice.axisB))
        record.separations.y = lengths.y;
    if (!same(remade.axisC, lattice.axisC))
        record.separations.z = lengths.z;
    latticeForm(out, std::as_const(record));
}

void CXmlReader::readCubicFactoryPosition(CCubicFactoryPosition& p) { readLattice(in(), p); }
void CXmlWriter::writeCubicFactoryPosition(const CCubicFactoryPosition& p) { writeLattice(out(), p); }
void CXmlReader::readBCCFactoryPosition(CBCCFactoryPosition& p) { readLattice(in(), p); }
void CXmlWriter::writeBCCFactoryPosition(const CBCCFactoryPosition& p) { writeLattice(out(), p); }
void CXmlReader::readFCCFactoryPosition(CFCCFactoryPosition& p) { readLattice(in(), p); }
void CXmlWriter::writeFCCFactoryPosition(const CFCCFactoryPosition& p) { writeLattice(out(), p); }

// ---------------------------------------------------------------- size

template <class TForm, class TLaw>
static void scalingWordForm(TForm& f, TLaw& law)
{
    f.word("scaling", law.radiusScaling, "radius", "volume");
}

template <class TForm, class TLaw>
static void fixedSizeForm(TForm& f, TLaw& law)
{
    f.attribute("size", law.value);
    scalingWordForm(f, law);
}

template <class TForm, class TLaw>
static void randomSizeForm(TForm& f, TLaw& law)
{
    f.attribute("min", law.min);
    f.attribute("max", law.max);
    scalingWordForm(f, law);
}

template <class TForm, class TLaw>
static void normalSizeForm(TForm& f, TLaw& law)
{
    f.attribute("mean", law.mean);
    f.attribute("std_dev", law.deviation);
    f.attribute("lower_cap", law.lowerCap);
    f.attribute("upper_cap", law.upperCap);
    f.flag("capped", law.capped);
    scalingWordForm(f, law);
}

template <class TForm, class TLaw>
static void logNormalSizeForm(TForm& f, TLaw& law)
{
    normalSizeForm(f, law);
    f.word("log_defined", law.logMean, "true", "false");
}

void CXmlReader::readFixedFactorySize(CFixedFactorySize& p) { fixedSizeForm(in(), p.sizeDistribution); }
void CXmlWriter::writeFixedFactorySize(const CFixedFactorySize& p) { fixedSizeForm(out(), p.sizeDistribution); }
void CXmlReader::readRandomFactorySize(CRandomFactorySize& p)
{
    randomSizeForm(in(), p.sizeDistribution);
    attributes.know("version");
}
void CXmlWriter::writeRandomFactorySize(const CRandomFactorySize& p) { randomSizeForm(out(), p.sizeDistribution); }
void CXmlReader::readNormalFactorySize(CNormalFactorySize& p) { normalSizeForm(in(), p.sizeDistribution); }
void CXmlWriter::writeNormalFactorySize(const CNormalFactorySize& p) { normalSizeForm(out(), p.sizeDistribution); }
void CXmlReader::readLogNormalFactorySize(CLogNormalFactorySize& p) { logNormalSizeForm(in(), p.sizeDistribution); }
void CXmlWriter::writeLogNormalFactorySize(const CLogNormalFactorySize& p)
{
    logNormalSizeForm(out(), p.sizeDistribution);
}

/// "SIZE,SHARE:" for each band, shares cumulative; numbers have six significant digits.
static QString bandsText(const CUserDefinedSizeDistribution& law)
{
    QString text;
    for (const auto& [size, share] : law.bands) {
        // Documents hold scales of the volume. The cube keeps what a scale of the radius means.
        const double scale = law.radiusScaling ? size * size * size : size;
        text += QString::number(scale, 'g', 6) + ',' + QString::number(share, 'g', 6) + ':';
    }
    return text;
}

/// \return bands that are none
static int readBands(const QString& text, FuzzyMap<double>& bands)
{
    int broken = 0;
    for (const QStringRef& band : text.splitRef(':', Qt::SkipEmptyParts)) {
        const int comma = band.indexOf(',');
        bool isSize = false, isShare = false;
        const double size = band.left(std::max(comma, 0)).toDouble(&isSize);
        const double share = band.mid(comma + 1).toDouble(&isShare);
        if (isSize && isShare)
            bands[size] = share;
        else
            ++broken;
    }
    return broken;
}

void CXmlReader::readUserDefinedFactorySize(CUserDefinedFactorySize& p)
{
    CUserDefinedSizeDistribution& law = p.sizeDistribution;
    scalingWordForm(in(), law);
    law.bands.clear();
    const int broken = readBands(attributes.text("bands"), law.bands);
    report(eLost, NLogTitle::xmlImport, counted(broken, "size band") + " left out: no two numbers.",
           static_cast<quint64>(broken));
    const quint32 announced = attributes.count("band_count");
    const std::size_t held = law.bands.size() + static_cast<std::size_t>(broken);
    if (announced != held)
        report(eRepaired, NLogTitle::xmlImport,
               counted(announced, "size band") + " announced, and " + std::to_string(held) + " there.");
}

void CXmlWriter::writeUserDefinedFactorySize(const CUserDefinedFactorySize& p)
{
    out().attribute("scaling", "volume");
    out().attribute("band_count", static_cast<quint32>(p.sizeDistribution.bands.size()));
    out().attribute("bands", bandsText(p.sizeDistribution));
}

} // namespace NBrenmark
