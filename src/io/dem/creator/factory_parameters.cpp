// The parameters of particle factories, but for their sizes.
#include "core/log.h"
#include "io/dem/dem_reader.h"
#include "io/dem/dem_writer.h"
#include "model/factories/factory_angular_velocity.h"
#include "model/factories/factory_custom_property.h"
#include "model/factories/factory_orientation.h"
#include "model/factories/factory_position.h"
#include "model/factories/factory_type.h"
#include "model/factories/factory_velocity.h"
#include "properties/custom_property_meta_data.h"

#include <algorithm>

namespace NBrenmark {

// ---------------------------------------------------------------- velocities, angular velocities

template <class TForm, class TParam>
static void fixedForm(TForm&& f, TParam& param)
{
    f.point(param.value); // m/s or rad/s
}
void CDemCreatorDataReader::readFixedFactoryVelocity(CFixedFactoryVelocity& param) { fixedForm(in(), param); }
void CDemCreatorDataWriter::writeFixedFactoryVelocity(const CFixedFactoryVelocity& param) { fixedForm(out(), param); }
void CDemCreatorDataReader::readFixedFactoryAngVel(CFixedFactoryAngVel& param) { fixedForm(in(), param); }
void CDemCreatorDataWriter::writeFixedFactoryAngVel(const CFixedFactoryAngVel& param) { fixedForm(out(), param); }

template <class TForm, class TParam>
static void linearForm(TForm&& f, TParam& param)
{
    f.point(param.startVelocity); // m/s or rad/s
    f.point(param.endVelocity);   // m/s or rad/s
}
void CDemCreatorDataReader::readLinearFactoryVelocity(CLinearFactoryVelocity& param) { linearForm(in(), param); }
void CDemCreatorDataWriter::writeLinearFactoryVelocity(const CLinearFactoryVelocity& param)
{
    linearForm(out(), param);
}
void CDemCreatorDataReader::readLinearFactoryAngVel(CLinearFactoryAngVel& param) { linearForm(in(), param); }
void CDemCreatorDataWriter::writeLinearFactoryAngVel(const CLinearFactoryAngVel& param) { linearForm(out(), param); }

template <class TForm, class TDistribution>
static void randomForm(TForm&& f, TDistribution& distribution)
{
    f.f64(distribution.min); // in the unit of what is drawn
    f.f64(distribution.max); // in the unit of what is drawn
}
void CDemCreatorDataReader::readRandomFactoryVelocity(CRandomFactoryVelocity& param)
{
    randomForm(in(), param.magnitude);
}
void CDemCreatorDataWriter::writeRandomFactoryVelocity(const CRandomFactoryVelocity& param)
{
    randomForm(out(), param.magnitude);
}
void CDemCreatorDataReader::readRandomFactoryAngVel(CRandomFactoryAngVel& param) { randomForm(in(), param.magnitude); }
void CDemCreatorDataWriter::writeRandomFactoryAngVel(const CRandomFactoryAngVel& param)
{
    randomForm(out(), param.magnitude);
}

template <class TForm, class TDistribution>
static void normalForm(TForm&& f, TDistribution& distribution)
{
    f.f64(distribution.mean);      // in the unit of what is drawn
    f.f64(distribution.deviation); // in the unit of what is drawn
}

template <class TForm, class TParam>
static void normalDirectionForm(TForm&& f, TParam& param)
{
    normalForm(f, param.magnitude);
    f.point(param.direction, from(2, 4, 22), C3DVector(1.0, 0.0, 0.0)); // before, along x
}
void CDemCreatorDataReader::readNormalFactoryVelocity(CNormalFactoryVelocity& param)
{
    normalDirectionForm(in(), param);
    param.direction.normalise();
}
void CDemCreatorDataWriter::writeNormalFactoryVelocity(const CNormalFactoryVelocity& param)
{
    normalDirectionForm(out(), param);
}
void CDemCreatorDataReader::readNormalFactoryAngVel(CNormalFactoryAngVel& param) { normalDirectionForm(in(), param); }
void CDemCreatorDataWriter::writeNormalFactoryAngVel(const CNormalFactoryAngVel& param)
{
    normalDirectionForm(out(), param);
}

template <class TForm, class TParam>
static void sprayForm(TForm&& f, TParam& param)
{
    normalForm(f, param.magnitude);
    f.f64(param.sprayAngle);  // rad
    f.point(param.direction); // turned by up to the angle for each particle
}
void CDemCreatorDataReader::readSprayFactoryVelocity(CSprayFactoryVelocity& param) { sprayForm(in(), param); }
void CDemCreatorDataWriter::writeSprayFactoryVelocity(const CSprayFactoryVelocity& param) { sprayForm(out(), param); }

// ---------------------------------------------------------------- orientation

// Stored as a quaternion, held as a matrix.

void CDemCreatorDataReader::readFixedFactoryOrientation(CFixedFactoryOrientation& param)
{
    CQuaternion orientation;
    readQuaternion(orientation);
    param.setQuaternion(orientation);
}

void CDemCreatorDataWriter::writeFixedFactoryOrientation(const CFixedFactoryOrientation& param)
{
    writeQuaternion(param.quaternion());
}

// ---------------------------------------------------------------- type

template <class TForm, class TParam>
static void fixedTypeForm(TForm&& f, TParam& param)
{
    if constexpr (std::decay_t<TForm>::isReading) {
        param.names.resize(1);
        f.text(param.names.front());
    }
    else
        f.text(param.names.empty() ? QString() : param.names.front());
}
void CDemCreatorDataReader::readFixedFactoryType(CFixedFactoryType& param) { fixedTypeForm(in(), param); }
void CDemCreatorDataWriter::writeFixedFactoryType(const CFixedFactoryType& param) { fixedTypeForm(out(), param); }

template <class TForm, class TParam>
static void binaryTypeForm(TForm&& f, TParam& param)
{
    constexpr qint64 leastNameBytes = 4;
    f.i32(param.next); // index of a name; any number is taken round
    if (f.since(24, 0, 28))
        f.length("name of a particle type", leastNameBytes, param.names);
    else if constexpr (std::decay_t<TForm>::isReading)
        param.names.resize(2); // before, always two types
    for (auto& name : param.names)
        f.text(name);
}
void CDemCreatorDataReader::readBinaryFactoryType(CBinaryFactoryType& param) { binaryTypeForm(in(), param); }
void CDemCreatorDataWriter::writeBinaryFactoryType(const CBinaryFactoryType& param) { binaryTypeForm(out(), param); }

// ---------------------------------------------------------------- position

template <class TForm, class TParam>
static void randomPositionForm(TForm&& f, TParam& param)
{
    f.i32(param.style); // 0 anywhere, 1 on a walk
    if constexpr (std::decay_t<TForm>::isReading)
        f.dropF64(); // the density factor
    else
        f.f64(param.densityFactor);               // a reader of this family doesn't keep it, an older solver may
    f.f64(param.multiFactor);                     // no unit
    f.f64(param.maxAngle);                        // rad
    f.f64(param.separation, from(2, 4, 33), 0.0); // m
    f.point(param.seedPosition, from(2, 4, 22), unsetPoint());           // m; three not-a-numbers: not set
    f.point(param.seedVector, from(2, 4, 22), C3DVector(1.0, 0.0, 0.0)); // state of the walk
}
void CDemCreatorDataReader::readRandomFactoryPosition(CRandomFactoryPosition& param)
{
    randomPositionForm(in(), param);
}
void CDemCreatorDataWriter::writeRandomFactoryPosition(const CRandomFactoryPosition& param)
{
    randomPositionForm(out(), param);
}

template <class TForm, class TLattice>
static void latticeForm(TForm&& f, TLattice& lattice)
{
    const SGate gateWalk = from(2, 4, 21);
    const SGate gateLongWalk = from(2, 4, 31);
    f.point(lattice.axisA);                              // m
    f.point(lattice.axisB);                              // m
    f.point(lattice.axisC);                              // m
    f.point(lattice.start);                              // m
    f.point(lattice.rotation, gateWalk, C3DVector());    // rad, about x, y and z
    f.point(lattice.cursor1, gateWalk, C3DVector());     // where the solver's walk is
    f.point(lattice.cursor0, gateWalk, unsetPoint());    // three not-a-numbers: the walk hasn't begun
    f.point(lattice.cursor2, gateLongWalk, C3DVector()); // where the solver's walk is
    f.point(lattice.cursor3, gateLongWalk, C3DVector()); // where the solver's walk is
}
void CDemCreatorDataReader::read3DLattice(C3DLattice& lattice) { latticeForm(in(), lattice); }
void CDemCreatorDataWriter::write3DLattice(const C3DLattice& lattice) { latticeForm(out(), lattice); }
void CDemCreatorDataReader::readBCCFactoryPosition(CBCCFactoryPosition& param) { read3DLattice(param); }
void CDemCreatorDataWriter::writeBCCFactoryPosition(const CBCCFactoryPosition& param) { write3DLattice(param); }
void CDemCreatorDataReader::readCubicFactoryPosition(CCubicFactoryPosition& param) { read3DLattice(param); }
void CDemCreatorDataWriter::writeCubicFactoryPosition(const CCubicFactoryPosition& param) { write3DLattice(param); }
void CDemCreatorDataReader::readFCCFactoryPosition(CFCCFactoryPosition& param) { read3DLattice(param); }
void CDemCreatorDataWriter::writeFCCFactoryPosition(const CFCCFactoryPosition& param) { write3DLattice(param); }

// ---------------------------------------------------------------- custom properties

/// One number for each element of the property; before 25.0.1 one for all of them.
void CDemCreatorDataReader::readFixedValueCustomPropertyFactoryParam(CFixedValueCustomPropertyFactoryParam& param)
{
    CInForm f = in();
    const std::size_t elements = param.property() != nullptr ? param.property()->numberOfElements : 0;
    if (!f.since(25, 0, 1)) {
        double value = 0.0;
        f.f64(value); // in the unit of the property
        param.values.assign(std::max<std::size_t>(1, elements), value);
        return;
    }
    std::vector<double> stored;
    f.length("value", 8, stored);
    for (double& value : stored)
        f.f64(value); // in the unit of the property
    if (!param.takeStored(stored))
        report(stored.size() > elements ? eLost : eDefaulted, NLogTitle::legacyRead,
               counted(static_cast<qint64>(stored.size()), "value") + " in the factory parameter of the property \"" +
                   param.property()->name + "\", " + std::to_string(elements) + " expected",
               std::max(stored.size(), elements) - std::min(stored.size(), elements), param.property()->name);
}

void CDemCreatorDataWriter::writeFixedValueCustomPropertyFactoryParam(
    const CFixedValueCustomPropertyFactoryParam& param)
{
    COutForm f = out();
    f.length("value", 8, param.values);
    for (const double value : param.values)
        f.f64(value); // in the unit of the property
}

void CDemCreatorDataReader::readRandomValueCustomPropertyFactoryParam(CRandomValueCustomPropertyFactoryParam& param)
{
    randomForm(in(), param.distribution);
}
void CDemCreatorDataWriter::writeRandomValueCustomPropertyFactoryParam(
    const CRandomValueCustomPropertyFactoryParam& param)
{
    randomForm(out(), param.distribution);
}
void CDemCreatorDataReader::readNormalDistCustomPropertyFactoryParam(CNormalDistCustomPropertyFactoryParam& param)
{
    normalForm(in(), param.distribution);
}
void CDemCreatorDataWriter::writeNormalDistCustomPropertyFactoryParam(
    const CNormalDistCustomPropertyFactoryParam& param)
{
    normalForm(out(), param.distribution);
}

} // namespace NBrenmark
