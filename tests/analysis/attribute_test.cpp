// Values of attributes against numbers that were worked out by hand.
#include "analysis/attributes/attribute_table.h"
#include "core/deck/simulation.h"
#include "model/geometry/geometry_group.h"
#include "support/paths.h"
#include "support/samples.h"
#include "units/units_converter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QDir>

namespace NBrenmark {

using namespace NAttributes;

namespace {

/// A particle of twice the size of its template, turned by a quarter about z, on a triangle that it presses; with a
/// bond and a collision of the same numbers in other places.
struct SScene : SModel
{
    SScene()
    {
        CParticleType& type = timestep.particleTypes.append();
        type.rawMass = 0.5;
        type.rawVolume = 0.25;
        type.rawInertia = C3DPoint(1, 2, 3);
        type.spheres.resize(1);
        type.spheres[0].position = C3DPoint(3, 4, 0);
        type.spheres[0].setRadii(2, 1);
        type.gravity = C3DPoint(0, 0, -10);
        type.resizeSlots(2);
        type.dataMask = allParticleFields & ~eUnscaledForceTorque;
        type.ids = {7, 0};
        type.scale[0] = 2;
        type.velocity[0] = C3DVector(1, 2, 2);
        type.position[0] = C3DPoint(0, 0, 3);
        type.orientation[0] = CQuaternion::fromAxisAngle(C3DVector(0, 0, 1), std::acos(0.0));
        type.angularVelocity[0] = C3DVector(0.5, 0, 0);
        type.forceTorque[0] = {1, 2, 3, 4, 5, 6, 7};
        type.creationTime[0] = 0.25;
        timestep.time = 1.0;

        auto* const group = new CGeometryGroup(nullptr);
        creator.geometryGroups.add(group, false);
        group->setMesh({C3DPoint(0, 0, 0), C3DPoint(3, 0, 0), C3DPoint(0, 3, 0)}, {{0, 1, 2}});
        group->dataMask = eTriangleForces;
        group->triangleForces = {{9, 0, 18, 0, 0, 0, 27}};
        group->velocity = C3DVector(1, 0, 0);
        group->motionHistory.push_back(CAngVelAndPos());
        group->motionHistory[0].angularVelocity = C3DVector(0, 0, 2);

        CContactsBase& walls = timestep.contacts.surfaceGeometry;
        walls.resizeRows(2);
        walls.normalOverlap = {0.125, releasedOverlap};
        timestep.bonds.surfaceSurface.resizeRows(1);
        timestep.bonds.surfaceSurface.normalTorque[0] = C3DVector(0, 3, 4);
        CCollisionsBase& collisions = timestep.collisions.surfaceSurface;
        collisions.resizeRecords(1);
        collisions.ids = {5};
        collisions.relativeVelocity[0] = C3DVector(3, 4, 0);
        collisions.unitCpVector[0] = C3DVector(0, 1, 0);
        collisions.totalNormalForce[0] = C3DVector(8, 0, 0);
        collisions.iterations = {4};
        collisions.startTime = {0.5};
        collisions.endTime = {0.75};
        collisions.normalEnergy = {1.5};
        collisions.shearEnergy = {0.25};
        timestep.attributeMaker = attributesWhenAsked;
        timestep.rebuildAttributes();
    }

    /// "no value" as an empty list.
    std::vector<double> value(const IAttributeRetrieval& owner, const char* name, quint32 row = 0) const
    {
        SAttributeValue out;
        if (!owner.getValueByName(out, QLatin1String(name), row))
            return {};
        const std::size_t width = out.tag == SAttributeValue::eScalar ? 1 : out.tag == SAttributeValue::eVector ? 3 : 4;
        return std::vector<double>(out.numbers.begin(), out.numbers.begin() + static_cast<std::ptrdiff_t>(width));
    }
};

} // namespace

using Values = std::vector<double>;

TEST(Attributes, followTheirFormulas)
{
    const SScene s;
    const CParticleType& particle = *s.timestep.particleTypes.types[0];
    const CGeometryGroup& wall = *s.creator.geometryGroups.at(0);
    const CCollisionsBase& collision = s.timestep.collisions.surfaceSurface;
    const std::tuple<const IAttributeRetrieval*, const char*, Values> cases[] = {
        {&particle, "Mass", {4}},                       // 0.5 x 2^3
        {&particle, "Volume", {2}},                     // 0.25 x 2^3
        {&particle, "Moment of Inertia", {32, 64, 96}}, // x 2^5
        {&particle, "Diameter", {24}},                  // 2 x 2 x (5 + 1)
        {&particle, "Velocity Magnitude", {3}},         // root of 1 + 4 + 4
        {&particle, "Velocity Z", {2}},
        {&particle, "Kinetic Energy", {18}},           // 4 x 9 / 2
        {&particle, "Rotational Kinetic Energy", {8}}, // about its own y: 64 x 0.25 / 2
        {&particle, "Potential Energy", {120}},        // 4 x 10 x 3
        {&particle, "Total Energy", {146}},
        {&particle, "Torque", {4, 5, 6}},
        {&particle, "Compressive Force", {}},    // there is no unscaled record
        {&particle, "Residence Time", {0.75}},   // 1 - 0.25
        {&particle, "Coordination Number", {1}}, // the wall, not the released row
        {&particle, "Normal Force", {}},         // not of particles
        {&wall, "Position", {1, 1, 0}},
        {&wall, "Pressure", {6}},                 // 27 / 4.5
        {&wall, "Pressure Selection", {2, 0, 4}}, // 9 / 4.5, 18 / 4.5
        {&wall, "Velocity", {-1, 2, 0}},          // (1, 0, 0) + 2 z x (1, 1, 0)
        {&wall, "Surface Normal Magnitude", {}},  // would be 1
        {&s.timestep.bonds.surfaceSurface, "Normal Moment Magnitude", {5}},
        {&collision, "Average Normal Force", {2, 0, 0}}, // 8 / 4
        {&collision, "Relative Velocity Normal", {0, 4, 0}},
        {&collision, "Relative Velocity Tangential", {3, 0, 0}},
        {&collision, "Duration", {0.25}},
        {&collision, "Total Energy Loss", {1.75}},
    };
    for (const auto& [owner, name, expected] : cases)
        EXPECT_THAT(s.value(*owner, name), testing::Pointwise(testing::DoubleNear(1e-12), expected)) << name;
    EXPECT_EQ(s.value(particle, "Mass", 1), Values()) << "a free slot";
    EXPECT_EQ(s.value(particle, "Mass", 2), Values()) << "beyond the end";
    SAttributeValue ids;
    ASSERT_TRUE(particle.getValueByName(ids, QStringLiteral("ID"), IAttributeRetrieval::allRows));
    EXPECT_EQ(ids.integers, std::vector<qint32>{7});
}

TEST(Attributes, countNoContactsWhereSomeWereNotSaved)
{
    SScene s;
    s.timestep.timestepMask &= ~quint32(eSurfaceSurfaceContacts);
    EXPECT_EQ(s.value(*s.timestep.particleTypes.types[0], "Coordination Number"), Values());
}

TEST(Attributes, ofCollisionsKeepTheirColumnsUntilUnitRowsOrTableChange)
{
    SScene s;
    CCollisionsBase& collisions = s.timestep.collisions.surfaceSurface;
    const auto durations = [&collisions] {
        SAttributeValue out;
        collisions.getValueByName(out, QStringLiteral("Duration"), IAttributeRetrieval::allRows);
        return out.list;
    };
    EXPECT_EQ(durations(), Values{0.25});
    collisions.endTime = {6.5}; // unknown to the container
    EXPECT_EQ(durations(), Values{0.25});
    CUnitsTime::instance().currentIndex = 1;
    EXPECT_EQ(durations(), Values{0.1}) << "in minutes";
    CUnitsTime::instance().currentIndex = 0;
    EXPECT_EQ(durations(), Values{6.0});
    collisions.resizeRecords(2);
    collisions.ids[1] = 6;
    EXPECT_EQ(durations(), (Values{6.0, 0.0}));
    collisions.endTime[1] = 1.0;
    s.timestep.rebuildAttributes();
    EXPECT_EQ(durations(), (Values{6.0, 1.0}));
}

/// Counts the values of an owner, and holds those in the last unit of each quantity against those in base units.
template <class TOwner>
static std::size_t valuesThatAgree(const TOwner& owner, const CAttributeTable& table, EAttributeOwner kind)
{
    std::size_t compared = 0;
    const std::vector<quint32> rows = liveRows(owner);
    const SAttributeRows all{rows.data(), rows.size()};
    for (const auto& attribute : table.all) {
        const SQuantity& quantity = quantityOf(attribute->unitsType);
        if ((attribute->owners & kind) == 0 || quantity.units.size() < 2)
            continue;
        Values base(rows.size() * attribute->width()), shown(base.size());
        const bool isHeld = attribute->column(owner, all, nullptr, base.data());
        EXPECT_EQ(attribute->column(owner, all, &quantity.units.back(), shown.data()), isHeld);
        const int unit = static_cast<int>(quantity.units.size()) - 1;
        for (std::size_t i = 0; isHeld && i < base.size(); ++i, ++compared)
            if (!(std::abs(getUnits(quantity.number).toBase(shown[i], unit) - base[i]) <= 1e-12 * std::abs(base[i])) &&
                !std::isnan(base[i]))
                ADD_FAILURE() << attribute->name.toStdString() << ": " << base[i] << " is shown as " << shown[i];
    }
    return compared;
}

TEST(Attributes, ofEverySampleAgreeInTwoSystemsOfUnits)
{
    const QDir samples(QString::fromStdString(projectFolder()) + "/samples");
    for (const QString& deck : samples.entryList({"*.dem"})) {
        CSimulation simulation;
        ASSERT_TRUE(simulation.setUp());
        ASSERT_EQ(simulation.load(samples.filePath(deck)), 0) << deck.toStdString();
        ASSERT_TRUE(simulation.goToTimestep(simulation.ioManager.timestepCount() - 1, eIntoCurrentFrame));
        const CTimestepData& timestep = simulation.currentFrame->timestep;
        const CAttributeTable table = buildAttributeTable(timestep);
        std::size_t compared = 0;
        for (const auto& type : timestep.particleTypes.types) {
            compared += valuesThatAgree(*type, table, eParticleAttribute);
            SAttributeValue masses; // by name, as the reader has left the type
            EXPECT_EQ(type->getValueByName(masses, "Mass", IAttributeRetrieval::allRows), type->liveCount() > 0);
        }
        for (const CGeometryGroup* const group : timestep.creatorData.geometryGroups.groups())
            compared += group == nullptr ? 0 : valuesThatAgree(*group, table, eGeometryAttribute);
        for (const CContactsBase* const family : std::initializer_list<const CContactsBase*>{
                 &timestep.contacts.surfaceSurface, &timestep.contacts.surfaceGeometry})
            compared += valuesThatAgree(*family, table, eContactAttribute);
        for (const CBondsBase* const family :
             std::initializer_list<const CBondsBase*>{&timestep.bonds.surfaceSurface, &timestep.bonds.surfaceGeometry})
            compared += valuesThatAgree(*family, table, eBondAttribute);
        for (const CCollisionsBase* const family : std::initializer_list<const CCollisionsBase*>{
                 &timestep.collisions.surfaceSurface, &timestep.collisions.surfaceGeometry})
            compared += valuesThatAgree(*family, table, eCollisionAttribute);
        compared += valuesThatAgree(timestep, table, eSimulationAttribute);
        EXPECT_GT(compared, 0u) << deck.toStdString();
        simulation.close(false);
    }
}

} // namespace NBrenmark
