// The text of factory parameters, each below the word of its kind.
#include "io/text/text_writer.h"
#include "model/factories/factory_angular_velocity.h"
#include "model/factories/factory_custom_property.h"
#include "model/factories/factory_orientation.h"
#include "model/factories/factory_position.h"
#include "model/factories/factory_size.h"
#include "model/factories/factory_type.h"
#include "model/factories/factory_velocity.h"

namespace NBrenmark {

// Most parameters are definition alone: of those there is nothing to show in a timestep.

/// Mean and spread, of a law of which no file holds the caps.
static void spread(CTextOutput& out, const CNormalDistribution& law)
{
    out.value("mean", law.mean);           // in the unit of what is drawn
    out.value("deviation", law.deviation); // in the unit of what is drawn
}

static void range(CTextOutput& out, const CRandomDistribution& law)
{
    out.value("min", law.min); // in the unit of what is drawn
    out.value("max", law.max); // in the unit of what is drawn
}

// ---------------------------------------------------------------- velocities

void CTextWriter::writeSprayFactoryVelocity(const CSprayFactoryVelocity& p)
{
    if (!covers(ETextPart::eDefinition))
        return;
    spread(out, p.magnitude);
    out.value("sprayAngle", p.sprayAngle); // rad
    out.value("direction", p.direction);
}

void CTextWriter::writeRandomFactoryVelocity(const CRandomFactoryVelocity& p)
{
    if (covers(ETextPart::eDefinition))
        range(out, p.magnitude);
}

void CTextWriter::writeNormalFactoryVelocity(const CNormalFactoryVelocity& p)
{
    if (!covers(ETextPart::eDefinition))
        return;
    spread(out, p.magnitude);
    out.value("direction", p.direction);
}

void CTextWriter::writeLinearFactoryVelocity(const CLinearFactoryVelocity& p)
{
    if (!covers(ETextPart::eDefinition))
        return;
    out.value("startVelocity", p.startVelocity); // m/s or rad/s
    out.value("endVelocity", p.endVelocity);     // m/s or rad/s
}

void CTextWriter::writeFixedFactoryVelocity(const CFixedFactoryVelocity& p)
{
    if (covers(ETextPart::eDefinition))
        out.value("value", p.value); // m/s or rad/s
}

// ---------------------------------------------------------------- angular velocities

void CTextWriter::writeLinearFactoryAngVel(const CLinearFactoryAngVel& p)
{
    if (!covers(ETextPart::eDefinition))
        return;
    out.value("startVelocity", p.startVelocity); // m/s or rad/s
    out.value("endVelocity", p.endVelocity);     // m/s or rad/s
}

void CTextWriter::writeRandomFactoryAngVel(const CRandomFactoryAngVel& p)
{
    if (covers(ETextPart::eDefinition))
        range(out, p.magnitude);
}

void CTextWriter::writeFixedFactoryAngVel(const CFixedFactoryAngVel& p)
{
    if (covers(ETextPart::eDefinition))
        out.value("value", p.value); // m/s or rad/s
}

void CTextWriter::writeNormalFactoryAngVel(const CNormalFactoryAngVel& p)
{
    if (!covers(ETextPart::eDefinition))
        return;
    spread(out, p.magnitude);
    out.value("direction", p.direction);
}

// ---------------------------------------------------------------- orientation, type

void CTextWriter::writeFixedFactoryOrientation(const CFixedFactoryOrientation& p)
{
    if (covers(ETextPart::eDefinition))
        out.value("orientation", p.orientation);
}

static void typeNames(CTextOutput& out, const std::vector<QString>& names)
{
    out.group("names", [&] {
        for (size_t i = 0; i < names.size(); ++i)
            out.value(std::to_string(i).c_str(), names[i]);
    });
}

void CTextWriter::writeFixedFactoryType(const CFixedFactoryType& p)
{
    if (covers(ETextPart::eDefinition))
        typeNames(out, p.names);
}

void CTextWriter::writeBinaryFactoryType(const CBinaryFactoryType& p)
{
    if (covers(ETextPart::eDefinition))
        typeNames(out, p.names);
    if (covers(ETextPart::eState))
        out.value("next", p.next); // index of a name; any number is taken round
}

// ---------------------------------------------------------------- position

void CTextWriter::writeRandomFactoryPosition(const CRandomFactoryPosition& p)
{
    if (covers(ETextPart::eDefinition)) {
        out.value("style", p.style);
        out.value("densityFactor", p.densityFactor);
        out.value("multiFactor", p.multiFactor);
        out.value("maxAngle", p.maxAngle);     // rad
        out.value("separation", p.separation); // m
    }
    if (covers(ETextPart::eState)) {
        out.value("seedPosition", p.seedPosition); // m; three not-a-numbers: not set
        out.value("seedVector", p.seedVector);
    }
}

void CTextWriter::write3DLattice(const C3DLattice& lattice)
{
    if (covers(ETextPart::eDefinition)) {
        out.value("axisA", lattice.axisA);       // m
        out.value("axisB", lattice.axisB);       // m
        out.value("axisC", lattice.axisC);       // m
        out.value("start", lattice.start);       // m
        out.value("rotation", lattice.rotation); // rad, about x, y and z
    }
    if (covers(ETextPart::eState)) {
        out.value("cursor0", lattice.cursor0); // three not-a-numbers: the walk hasn't begun
        out.value("cursor1", lattice.cursor1);
        out.value("cursor2", lattice.cursor2);
        out.value("cursor3", lattice.cursor3);
    }
}

void CTextWriter::writeCubicFactoryPosition(const CCubicFactoryPosition& p) { write3DLattice(p); }
void CTextWriter::writeBCCFactoryPosition(const CBCCFactoryPosition& p) { write3DLattice(p); }
void CTextWriter::writeFCCFactoryPosition(const CFCCFactoryPosition& p) { write3DLattice(p); }

// ---------------------------------------------------------------- size

void CTextWriter::writeFixedFactorySize(const CFixedFactorySize& p)
{
    if (covers(ETextPart::eDefinition))
        p.sizeDistribution.write(*this);
}

void CTextWriter::writeRandomFactorySize(const CRandomFactorySize& p)
{
    if (covers(ETextPart::eDefinition))
        p.sizeDistribution.write(*this);
}

void CTextWriter::writeNormalFactorySize(const CNormalFactorySize& p)
{
    if (covers(ETextPart::eDefinition))
        p.sizeDistribution.write(*this);
}

void CTextWriter::writeLogNormalFactorySize(const CLogNormalFactorySize& p)
{
    if (covers(ETextPart::eDefinition))
        p.sizeDistribution.write(*this);
}

void CTextWriter::writeUserDefinedFactorySize(const CUserDefinedFactorySize& p)
{
    if (covers(ETextPart::eDefinition))
        p.sizeDistribution.write(*this);
    if (covers(ETextPart::eState))
        out.group("bandAccounting", [&] {
            for (const auto& [size, account] : p.bandAccounting)
                out.group(NText::text(size), [this, &held = account] { held.write(*this); });
        });
}

// ---------------------------------------------------------------- custom properties

void CTextWriter::writeNormalDistCustomPropertyFactoryParam(const CNormalDistCustomPropertyFactoryParam& p)
{
    if (covers(ETextPart::eDefinition))
        spread(out, p.distribution);
}

void CTextWriter::writeRandomValueCustomPropertyFactoryParam(const CRandomValueCustomPropertyFactoryParam& p)
{
    if (covers(ETextPart::eDefinition))
        range(out, p.distribution);
}

void CTextWriter::writeFixedValueCustomPropertyFactoryParam(const CFixedValueCustomPropertyFactoryParam& p)
{
    if (covers(ETextPart::eDefinition))
        out.array("values", p.values); // in the unit of the property
}

} // namespace NBrenmark
