// The parameters of particle factories in a creator model. Whoever holds a parameter stores the word of
// its kind beside it.

#include "io/hdf5/hdf5_reader.h"
#include "io/hdf5/hdf5_writer.h"

#include "core/log.h"
#include "io/hdf5/lattice.h"
#include "model/factories/factory_angular_velocity.h"
#include "model/factories/factory_custom_property.h"
#include "model/factories/factory_orientation.h"
#include "model/factories/factory_position.h"
#include "model/factories/factory_size.h"
#include "model/factories/factory_type.h"
#include "model/factories/factory_velocity.h"
#include "properties/custom_property_meta_data.h"

namespace NBrenmark {

/// A law of which the caps aren't stored.
template <class TForm, class TLaw>
static void spreadForm(TForm& f, TLaw& law)
{
    f.attribute("mean", law.mean);                    // in the unit of what is drawn
    f.attribute("standard deviation", law.deviation); // in the unit of what is drawn
}

// ---------------------------------------------------------------- velocities

template <class TForm, class TParam>
static void sprayVelocityForm(TForm& f, TParam& p)
{
    spreadForm(f, p.magnitude);
    f.attribute("max angle", p.sprayAngle); // rad
    f.dataset("direction", p.direction);    // turned by up to the angle for each particle
}

void CHdf5CreatorDataReader::readSprayFactoryVelocity(CSprayFactoryVelocity& p) { sprayVelocityForm(in(), p); }
void CHdf5CreatorDataWriter::writeSprayFactoryVelocity(const CSprayFactoryVelocity& p) { sprayVelocityForm(out(), p); }

void CHdf5CreatorDataReader::readRandomFactoryVelocity(CRandomFactoryVelocity& p) { p.magnitude.read(*this); }
void CHdf5CreatorDataWriter::writeRandomFactoryVelocity(const CRandomFactoryVelocity& p) { p.magnitude.write(*this); }

template <class TForm, class TParam>
static void normalVelocityForm(TForm& f, TParam& p)
{
    spreadForm(f, p.magnitude);
    f.dataset("velocity", p.direction); // a direction, whatever its name says
}

void CHdf5CreatorDataReader::readNormalFactoryVelocity(CNormalFactoryVelocity& p) { normalVelocityForm(in(), p); }
void CHdf5CreatorDataWriter::writeNormalFactoryVelocity(const CNormalFactoryVelocity& p)
{
    normalVelocityForm(out(), p);
}

template <class TForm, class TParam>
static void linearVelocityForm(TForm& f, TParam& p)
{
    f.dataset("start velocity", p.startVelocity); // m/s
    f.dataset("end velocity", p.endVelocity);     // m/s
}

void CHdf5CreatorDataReader::readLinearFactoryVelocity(CLinearFactoryVelocity& p) { linearVelocityForm(in(), p); }
void CHdf5CreatorDataWriter::writeLinearFactoryVelocity(const CLinearFactoryVelocity& p)
{
    linearVelocityForm(out(), p);
}

template <class TForm, class TParam>
static void fixedVelocityForm(TForm& f, TParam& p)
{
    f.dataset("velocity", p.value); // m/s
}

void CHdf5CreatorDataReader::readFixedFactoryVelocity(CFixedFactoryVelocity& p) { fixedVelocityForm(in(), p); }
void CHdf5CreatorDataWriter::writeFixedFactoryVelocity(const CFixedFactoryVelocity& p) { fixedVelocityForm(out(), p); }

// ---------------------------------------------------------------- angular velocities

template <class TForm, class TParam>
static void linearAngVelForm(TForm& f, TParam& p)
{
    f.dataset("start angvel", p.startVelocity); // rad/s
    f.dataset("end angvel", p.endVelocity);     // rad/s
}

void CHdf5CreatorDataReader::readLinearFactoryAngVel(CLinearFactoryAngVel& p) { linearAngVelForm(in(), p); }
void CHdf5CreatorDataWriter::writeLinearFactoryAngVel(const CLinearFactoryAngVel& p) { linearAngVelForm(out(), p); }

void CHdf5CreatorDataReader::readRandomFactoryAngVel(CRandomFactoryAngVel& p) { p.magnitude.read(*this); }
void CHdf5CreatorDataWriter::writeRandomFactoryAngVel(const CRandomFactoryAngVel& p) { p.magnitude.write(*this); }

template <class TForm, class TParam>
static void fixedAngVelForm(TForm& f, TParam& p)
{
    f.dataset("value", p.value); // rad/s
}

void CHdf5CreatorDataReader::readFixedFactoryAngVel(CFixedFactoryAngVel& p) { fixedAngVelForm(in(), p); }
void CHdf5CreatorDataWriter::writeFixedFactoryAngVel(const CFixedFactoryAngVel& p) { fixedAngVelForm(out(), p); }

template <class TForm, class TParam>
static void normalAngVelForm(TForm& f, TParam& p)
{
    spreadForm(f, p.magnitude);
    f.dataset("angular velocity", p.direction); // a direction, whatever its name says
}

void CHdf5CreatorDataReader::readNormalFactoryAngVel(CNormalFactoryAngVel& p) { normalAngVelForm(in(), p); }
void CHdf5CreatorDataWriter::writeNormalFactoryAngVel(const CNormalFactoryAngVel& p) { normalAngVelForm(out(), p); }

// ---------------------------------------------------------------- orientation

static const char* const turnName = "value";

void CHdf5CreatorDataReader::readFixedFactoryOrientation(CFixedFactoryOrientation& p)
{
    CQuaternion turn;
    in().dataset(turnName, turn); // w, x, y, z
    p.setQuaternion(turn);
}

void CHdf5CreatorDataWriter::writeFixedFactoryOrientation(const CFixedFactoryOrientation& p)
{
    out().dataset(turnName, p.quaternion()); // w, x, y, z
}

// ---------------------------------------------------------------- type

static const char* const typeNames = "type names";

void CHdf5CreatorDataReader::readFixedFactoryType(CFixedFactoryType& p)
{
    p.names.assign(1, QString());
    in().dataset(typeNames, p.names.front());
}

void CHdf5CreatorDataWriter::writeFixedFactoryType(const CFixedFactoryType& p)
{
    out().dataset(typeNames, p.names.empty() ? QString() : p.names.front());
}

void CHdf5CreatorDataReader::readBinaryFactoryType(CBinaryFactoryType& p)
{
    in().attribute("next", p.next); // index of a name; any number is taken round
    QStringList names;
    in().dataset(typeNames, names);
    p.names.assign(names.begin(), names.end());
}

void CHdf5CreatorDataWriter::writeBinaryFactoryType(const CBinaryFactoryType& p)
{
    out().attribute("next", p.next); // index of a name; any number is taken round
    QStringList names;
    for (const QString& name : p.names)
        names.append(name);
    out().dataset(typeNames, names);
}

// ---------------------------------------------------------------- position

template <class TForm, class TParam>
static void randomPositionForm(TForm& f, TParam& p)
{
    f.signedAttribute("style", p.style);        // 0 anywhere, 1 on a walk
    f.attribute("multi factor", p.multiFactor); // no unit
    f.attribute("max angle", p.maxAngle);       // rad
    f.attribute("separation", p.separation);    // m
    f.dataset("seed position", p.seedPosition); // m; three not-a-numbers: not set
    f.dataset("seed vector", p.seedVector);     // state of the walk
}

void CHdf5CreatorDataReader::readRandomFactoryPosition(CRandomFactoryPosition& p) { randomPositionForm(in(), p); }

void CHdf5CreatorDataWriter::writeRandomFactoryPosition(const CRandomFactoryPosition& p)
{
    randomPositionForm(out(), p);
    if (p.densityFactor != CRandomFactoryPosition().densityFactor)
        report(eNotCarried, NLogTitle::hdf5Write,
               "The density factor " + QString::number(p.densityFactor).toStdString() +
                   " of a particle factory is dropped: this family has no place for it.");
}

void CHdf5CreatorDataReader::read3DLattice(C3DLattice& lattice) { readLattice(in(), latticeDefinition(lattice)); }

void CHdf5CreatorDataWriter::write3DLattice(const C3DLattice& lattice)
{
    writeLattice(out(), latticeDefinition(lattice));
}

void CHdf5CreatorDataReader::readCubicFactoryPosition(CCubicFactoryPosition& p) { read3DLattice(p); }
void CHdf5CreatorDataWriter::writeCubicFactoryPosition(const CCubicFactoryPosition& p) { write3DLattice(p); }

void CHdf5CreatorDataReader::readBCCFactoryPosition(CBCCFactoryPosition& p) { read3DLattice(p); }
void CHdf5CreatorDataWriter::writeBCCFactoryPosition(const CBCCFactoryPosition& p) { write3DLattice(p); }

void CHdf5CreatorDataReader::readFCCFactoryPosition(CFCCFactoryPosition& p) { read3DLattice(p); }
void CHdf5CreatorDataWriter::writeFCCFactoryPosition(const CFCCFactoryPosition& p) { write3DLattice(p); }

// ---------------------------------------------------------------- size

void CHdf5CreatorDataReader::readFixedFactorySize(CFixedFactorySize& p) { p.sizeDistribution.read(*this); }
void CHdf5CreatorDataWriter::writeFixedFactorySize(const CFixedFactorySize& p) { p.sizeDistribution.write(*this); }

void CHdf5CreatorDataReader::readRandomFactorySize(CRandomFactorySize& p) { p.sizeDistribution.read(*this); }
void CHdf5CreatorDataWriter::writeRandomFactorySize(const CRandomFactorySize& p) { p.sizeDistribution.write(*this); }

void CHdf5CreatorDataReader::readNormalFactorySize(CNormalFactorySize& p) { p.sizeDistribution.read(*this); }
void CHdf5CreatorDataWriter::writeNormalFactorySize(const CNormalFactorySize& p) { p.sizeDistribution.write(*this); }

void CHdf5CreatorDataReader::readLogNormalFactorySize(CLogNormalFactorySize& p) { p.sizeDistribution.read(*this); }
void CHdf5CreatorDataWriter::writeLogNormalFactorySize(const CLogNormalFactorySize& p)
{
    p.sizeDistribution.write(*this);
}

void CHdf5CreatorDataReader::readUserDefinedFactorySize(CUserDefinedFactorySize& p) { p.sizeDistribution.read(*this); }
void CHdf5CreatorDataWriter::writeUserDefinedFactorySize(const CUserDefinedFactorySize& p)
{
    p.sizeDistribution.write(*this);
}

// ---------------------------------------------------------------- custom properties

template <class TForm, class TParam>
static void normalPropertyForm(TForm& f, TParam& p)
{
    spreadForm(f, p.distribution);
}

void CHdf5CreatorDataReader::readNormalDistCustomPropertyFactoryParam(CNormalDistCustomPropertyFactoryParam& p)
{
    normalPropertyForm(in(), p);
}

void CHdf5CreatorDataWriter::writeNormalDistCustomPropertyFactoryParam(const CNormalDistCustomPropertyFactoryParam& p)
{
    normalPropertyForm(out(), p);
}

void CHdf5CreatorDataReader::readRandomValueCustomPropertyFactoryParam(CRandomValueCustomPropertyFactoryParam& p)
{
    p.distribution.read(*this);
}

void CHdf5CreatorDataWriter::writeRandomValueCustomPropertyFactoryParam(const CRandomValueCustomPropertyFactoryParam& p)
{
    p.distribution.write(*this);
}

static const char* const valuesName = "data";

void CHdf5CreatorDataReader::readFixedValueCustomPropertyFactoryParam(CFixedValueCustomPropertyFactoryParam& p)
{
    std::vector<double> stored;
    in().plainRows(valuesName, stored); // in the unit of the property
    if (!p.takeStored(stored))
        report(stored.size() > p.values.size() ? eLost : eDefaulted, NLogTitle::hdf5Read,
               "A particle factory gives " + std::to_string(stored.size()) + " values to the custom property \"" +
                   p.property()->name + "\", which has " + std::to_string(p.values.size()) +
                   " elements: missing ones stay initial, others are discarded.",
               std::max(stored.size(), p.values.size()) - std::min(stored.size(), p.values.size()), p.property()->name);
}

void CHdf5CreatorDataWriter::writeFixedValueCustomPropertyFactoryParam(const CFixedValueCustomPropertyFactoryParam& p)
{
    out().plainRows(valuesName, p.values); // in the unit of the property
}

} // namespace NBrenmark
