// Contact laws against closed forms: forces, losses and loads that a textbook gives. Their every number is held by
// tests/tools/laws.py.
#include "materials/interactions.h"
#include "materials/materials.h"
#include "physics/contact_mechanics.h"
#include "physics/model_registry.h"
#include "physics/parameter_records.h"
#include "properties/custom_property_data.h"
#include "results/bond_table.h"

#include <gtest/gtest.h>
#include <atomic>
#include <cmath>
#include <cstdlib>
#include <new>

/// Counts what the laws allocate.
static std::atomic<std::size_t> allocations{0};

void* operator new(std::size_t size)
{
    ++allocations;
    if (void* const memory = std::malloc(size == 0 ? 1 : size))
        return memory;
    throw std::bad_alloc();
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    ++allocations;
    return std::malloc(size == 0 ? 1 : size);
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

namespace NBrenmark {

constexpr double pi = 3.14159265358979323846;

/// Two spheres of one material on the x axis, of radius 2 mm, so that R* is 1 mm, and of 2 g, so that m* is 1 g. With a
/// shear modulus of 3 MPa and nu of 0.25, E* is 4 MPa: E / (2 (1 - nu^2)), with E = 2 (1 + nu) G.
struct SPair
{
    explicit SPair(IContactModel& model)
    {
        for (const auto& property : model.requiredProperties(eContactOwner)) {
            auto copy = std::make_unique<CCustomPropertyMetaData>(property->name, eDoubleProperty, 1u, 0u);
            manager.addProperty(copy);
        }
        manager.lastFinalisedPropertyIndex = static_cast<int>(manager.propertyCount()) - 1;
        values.resize(1);
        changes.resize(1);
        model.managerChanged(manager, 0);
        contact.properties = {&values, &changes, 0};
        contact.material1 = contact.material2 = &material;
        contact.interaction = &interaction;
        contact.element1.name = contact.element2.name = "Ball";
        contact.element2.id = 1;
        contact.element1.mass = contact.element2.mass = 2e-3;
        for (SContactElement* const element : {&contact.element1, &contact.element2})
            element->physicalRadius = element->contactRadius = 2e-3;
        overlap(0.0);
    }
    void overlap(double overlap)
    {
        contact.normalOverlap = overlap;
        contact.element2.position = contact.element2.centreOfMass = C3DPoint(4e-3 - overlap, 0, 0);
        contact.contactPoint = C3DPoint(2e-3 - overlap / 2, 0, 0);
    }
    /// The force apart at an overlap. \param velocity  towards each other
    double force(IContactModel& model, double overlap, double velocity = 0.0)
    {
        this->overlap(overlap);
        contact.velocity1 = C3DVector(velocity, 0, 0);
        contact.results = SContactResults();
        EXPECT_TRUE(model.calculateForce(contact));
        for (std::size_t i = 0; i < values.lists.size(); ++i) {
            values.lists[i]->values[0] += changes.lists[i]->values[0];
            changes.lists[i]->values[0] = 0.0;
        }
        return -contact.results.normalForce.x;
    }
    double property(const char* name) { return values.list(name)->values[0]; }

    CMaterial material{"glass", 0.25, 3e6, 2500.0, 0.0, eBulkMaterial};
    CInteraction interaction;
    CCustomPropertyManager manager{"Contact Properties", eContactOwner};
    CCustomPropertyData values{&manager}, changes{&manager};
    SContact contact;
};

/// How fast two spheres part that met at a speed, over that speed, by integration of m* x'' = -F.
static double restitutionOf(IContactModel& model, double restitution)
{
    SPair pair(model);
    pair.interaction.restitution = restitution;
    const double dt = 1e-8, mass = 1e-3;
    double overlap = 1e-12, velocity = 1.0;
    while (overlap > 0.0) {
        velocity -= pair.force(model, overlap, velocity) / mass * dt;
        overlap += velocity * dt;
    }
    return -velocity;
}

TEST(Laws, dampedSpheresPartAtTheirRestitution)
{
    // A damped linear spring, seen until the overlap is 0 again, parts at e exactly; that of Hertz nearly so.
    CLinearSpringContactModel linear(eSphereSphereModel);
    linear.parameters.characteristicVelocity = 1.0;
    CHertzMindlinNoSlipContactModel hertz(eSphereSphereModel);
    for (const double restitution : {0.9, 0.5, 0.2}) {
        EXPECT_NEAR(restitutionOf(linear, restitution), restitution, 1e-3);
        EXPECT_NEAR(restitutionOf(hertz, restitution), restitution, 0.01);
    }
}

TEST(Laws, surfaceEnergyHoldsSpheresByThreePiGammaR)
{
    CJkrContactModel model(eSphereSphereModel);
    SPair pair(model);
    pair.interaction.restitution = 0.0;
    const double gamma = 0.05, radius = 1e-3, young = 4e6;
    EXPECT_EQ(pair.force(model, 1e-5), 4.0 / 3.0 * young * std::sqrt(1e-5 * radius) * 1e-5) << "no energy: Hertz";
    EXPECT_EQ(pair.force(model, -1e-9), 0.0);
    model.parameters.surfaceEnergy.set("glass", "glass", gamma);
    double least = 0.0;
    for (int i = 0; i < 20000; ++i)
        least = std::min(least, pair.force(model, 2e-5 - i * 2e-9));
    EXPECT_NEAR(least, -3.0 * pi * gamma * radius, 1e-6 * 3.0 * pi * gamma * radius);
    EXPECT_EQ(pair.contact.results.tangentialForce, C3DVector());
}

TEST(Laws, aHystereticSpringGivesBackTheSquareOfTheRestitution)
{
    CHystereticContactModel model(eSphereSphereModel);
    model.parameters.yields.set("Ball", 1e6);
    model.parameters.interactions.set("glass", "glass", {0.0, 0.8});
    SPair pair(model);
    pair.interaction.restitution = 0.6;
    const double stiffness = 5.0 * 1e-3 * 1e6, greatest = 1e-5;
    double in = 0.0, out = 0.0;
    const int steps = 10000;
    for (int i = 1; i <= steps; ++i)
        in += pair.force(model, greatest * i / steps) * greatest / steps;
    EXPECT_NEAR(pair.property("Residual Overlap"), (1 - 0.36) * greatest, 1e-12);
    for (int i = steps - 1; i > 0; --i)
        out += pair.force(model, greatest * i / steps) * greatest / steps;
    EXPECT_NEAR(in, 0.5 * stiffness * greatest * greatest, 1e-3 * in);
    EXPECT_NEAR(out / in, 0.36, 1e-3);
}

TEST(Laws, edinburghWithoutMemoryOrAdhesionIsHertz)
{
    CEdinburghCohesionContactModel model(eSphereSphereModel);
    model.parameters.pairs.set("glass", "glass", {0.0, 0.0, 0.0, 1.5, 1.0, 0.5});
    SPair pair(model);
    pair.interaction.restitution = 1.0;
    EXPECT_NEAR(pair.force(model, 1e-5), 4.0 / 3.0 * 4e6 * std::sqrt(1e-3) * std::pow(1e-5, 1.5), 1e-12);
}

TEST(Laws, leedsWalksThroughItsBranches)
{
    CLeedsAdhesionContactModel model(eSphereSphereModel);
    model.parameters.pairs.set("glass", "glass", {1e4, 5e4, 1e3, 1e4, -1e-3, -1e-3});
    SPair pair(model);
    const auto flags = [&] {
        std::string text;
        for (const char* const name : {"LEPA Is Plastic", "LEPA Is Cohesive", "LEPA Is Zero"})
            text += pair.property(name) == 1.0 ? '1' : '0';
        return text;
    };
    EXPECT_NEAR(pair.force(model, 1e-5, 1e-9), 1e4 * 1e-5 - 1e-3, 1e-8); // but for the damping
    std::string walk = flags();
    for (double overlap = 1e-5; overlap > 1e-8; overlap -= 1e-8) {
        pair.force(model, overlap, -1e-9);
        if (flags() != walk.substr(walk.size() - 3))
            walk += ' ' + flags();
    }
    EXPECT_EQ(walk, "000 100 110 111");
    EXPECT_EQ(pair.force(model, 1e-8, -1e-9), 0.0) << "it has let go";
}

TEST(Laws, aBondFormsBearsAndBreaks)
{
    CParallelBondContactModel model(eSphereSphereModel);
    model.parameters.bondParameters.set("glass <> glass", [] {
        CBondParameters beam;
        beam.normalStiffness = 1e12;
        beam.shearStiffness = 5e11;
        beam.normalStrength = 2e6;
        beam.shearStrength = 2e6;
        beam.bondRadius = 1e-3;
        return beam;
    }());
    model.parameters.formationStartTime = 1.0;
    SPair pair(model);
    CSurfaceSurfaceBonds bonds;
    bonds.reserveRows(0); // as a solver makes room between two steps
    CTimestepBonds table(bonds);
    pair.contact.bonds = &table;
    pair.contact.timeStep = 1e-6;
    const double area = pi * 1e-6;
    const auto pull = [&](double time, double velocity) {
        pair.contact.time = time;
        return pair.force(model, -1e-9, velocity);
    };
    EXPECT_EQ(pull(0.5, -0.1), 0.0) << "before the start";
    EXPECT_EQ(bonds.rowCount(), 0u);
    EXPECT_NEAR(pull(1.0, -0.1), -0.1 * 1e-6 * 1e12 * area, 1e-9); // kn A times the way
    EXPECT_EQ(bonds.rowCount(), 1u);
    EXPECT_EQ(model.parameters.state, eBondsForming);
    EXPECT_NEAR(pull(1.0 + 1e-6, -0.1), -0.2 * 1e-6 * 1e12 * area, 1e-9);
    EXPECT_EQ(model.parameters.state, eBondsDone);
    // 2 MPa are reached after 2 um: ten times the last step breaks it.
    EXPECT_EQ(pull(1.1, -2.0), 0.0);
    EXPECT_EQ(bonds.state[0], quint32(eBrokenBond));
    EXPECT_EQ(bonds.breakTime[0], 1.1);
    EXPECT_EQ(pull(1.2, -0.1), 0.0);
    EXPECT_EQ(bonds.rowCount(), 1u) << "no new one once forming is done";
}

TEST(Laws, allocateNothing)
{
    for (const SContactModelKind& kind : contactModelKinds()) {
        const std::unique_ptr<IContactModel> model = kind.make(eSphereSphereModel);
        if (auto* const jkr = dynamic_cast<CJkrContactModel*>(model.get()))
            jkr->parameters.surfaceEnergy.set("a name too long to be held in place", "glass", 0.1);
        if (auto* const bond = dynamic_cast<CParallelBondContactModel*>(model.get()))
            bond->parameters.bondParameters.set("a name too long to be held in place <> glass", {});
        SPair pair(*model);
        pair.material.name = "a name too long to be held in place";
        model->starting(1);
        pair.overlap(1e-6);
        const std::size_t before = allocations;
        model->calculateForce(pair.contact);
        EXPECT_EQ(allocations - before, 0u) << kind.name;
    }
}

TEST(Laws, whatCannotBeIsNoCrash)
{
    const double odd[] = {0.0, -1.0, 1e300, NAN, INFINITY};
    for (const SContactModelKind& kind : contactModelKinds())
        for (const double a : odd)
            for (const double b : odd) {
                const std::unique_ptr<IContactModel> model = kind.make(eSphereGeometryModel);
                SPair pair(*model);
                pair.contact.element2.kind = eGeometryElement;
                pair.contact.element1.mass = pair.contact.element1.physicalRadius = a;
                pair.material.shearModulus = pair.interaction.restitution = b;
                pair.contact.normalOverlap = a;
                model->calculateForce(pair.contact);
            }
}

} // namespace NBrenmark
