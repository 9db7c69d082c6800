// How many contacts a second each law deals with, beside the bare formulas of Hertz and Mindlin over the same contacts.
//
// Usage: laws [THREADS]
//
// THREADS, 1 if left out, call each model at once, each with a part of the contacts: built with the thread sanitizer that
// shows a race.

#include "materials/interactions.h"
#include "materials/materials.h"
#include "physics/contact_mechanics.h"
#include "physics/model_registry.h"
#include "physics/parameter_records.h"
#include "properties/custom_property_data.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <thread>
#include <vector>

using namespace NBrenmark;

namespace {

/// Contacts between two types of spheres, with the custom properties of any model.
struct SContacts
{
    SContacts(std::size_t count, const RequiredProperties& ofContacts, const RequiredProperties& ofParticles)
    {
        const auto define = [](CCustomPropertyManager& manager, const RequiredProperties& properties) {
            for (const auto& property : properties) {
                auto copy = std::make_unique<CCustomPropertyMetaData>(property->name, eDoubleProperty,
                                                                      property->numberOfElements, 0u);
                manager.addProperty(copy);
            }
            manager.lastFinalisedPropertyIndex = static_cast<int>(manager.propertyCount()) - 1;
        };
        define(contactManager, ofContacts);
        define(particleManager, ofParticles);
        for (CCustomPropertyData* const data : {&values, &changes, &particleValues, &particleChanges})
            data->resize(static_cast<unsigned int>(count));

        std::mt19937 random(3);
        std::uniform_real_distribution<double> one(-1.0, 1.0);
        const auto vector = [&](double scale) {
            return C3DVector(scale * one(random), scale * one(random), scale * one(random));
        };
        all.resize(count);
        for (std::size_t i = 0; i < count; ++i) {
            SContact& c = all[i];
            const double overlap = 1e-6 * (1.1 + one(random));
            c.time = 1.0;
            c.timeStep = 1e-6;
            c.element1.id = 1;
            c.element1.name = "a";
            c.element2.name = "b";
            c.element1.mass = c.element2.mass = 1e-5;
            for (SContactElement* const element : {&c.element1, &c.element2}) {
                element->contactRadius = element->physicalRadius = 1e-3;
                element->angularVelocity = vector(5.0);
                element->properties = {&particleValues, &particleChanges, static_cast<quint32>(i)};
            }
            const C3DVector normal = NContactMechanics::unit(vector(1.0));
            c.element2.position = c.element2.centreOfMass = C3DPoint((2e-3 - overlap) * normal);
            c.contactPoint = C3DPoint((1e-3 - overlap / 2) * normal);
            c.material1 = c.material2 = &material;
            c.interaction = &interaction;
            c.velocity1 = vector(0.1);
            c.velocity2 = vector(0.1);
            c.normalOverlap = overlap;
            c.tangentialOverlap = vector(1e-8);
            c.properties = {&values, &changes, static_cast<quint32>(i)};
        }
    }

    CMaterial material{"glass", 0.25, 1e8, 2500.0, 1.0, eBulkMaterial};
    CInteraction interaction;
    CCustomPropertyManager contactManager{"Contact Properties", eContactOwner};
    CCustomPropertyManager particleManager{"Particle Properties", eParticleOwner};
    CCustomPropertyData values{&contactManager}, changes{&contactManager};
    CCustomPropertyData particleValues{&particleManager}, particleChanges{&particleManager};
    std::vector<SContact> all;
};

/// Parameters by which a law acts.
void fill(IContactModel& model)
{
    if (auto* const linear = dynamic_cast<CLinearSpringContactModel*>(&model))
        linear->parameters.characteristicVelocity = 1.0;
    if (auto* const jkr = dynamic_cast<CJkrContactModel*>(&model))
        jkr->parameters.surfaceEnergy.set("glass", "glass", 0.1);
    if (auto* const cohesion = dynamic_cast<CCohesionContactModel*>(&model))
        cohesion->parameters.energyDensity.set("glass", "glass", 1e4);
    if (auto* const heat = dynamic_cast<CHeatConductionModel*>(&model)) {
        heat->parameters.conductivities.set("a", 1.0);
        heat->parameters.conductivities.set("b", 2.0);
    }
    if (auto* const hysteretic = dynamic_cast<CHystereticContactModel*>(&model)) {
        hysteretic->parameters.yields.set("a", 1e7);
        hysteretic->parameters.yields.set("b", 1e7);
        hysteretic->parameters.interactions.set("glass", "glass", {0.1, 0.8});
    }
    if (auto* const edinburgh = dynamic_cast<CEdinburghCohesionContactModel*>(&model))
        edinburgh->parameters.pairs.set("glass", "glass", {1e-3, 0.1, 0.5, 1.5, 1.5, 0.7});
    if (auto* const leeds = dynamic_cast<CLeedsAdhesionContactModel*>(&model))
        leeds->parameters.pairs.set("glass", "glass", {1e4, 5e4, 1e3, 1e4, -1e-3, -1e-3});
}

template <class TBody>
double seconds(const TBody& body)
{
    const auto begin = std::chrono::steady_clock::now();
    body();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

/// The law without all that a chain of models needs, for what it costs at the least.
void bareHertzMindlin(SContact& c)
{
    const double pi = NContactMechanics::pi;
    const double r1 = c.element1.physicalRadius, r2 = c.element2.physicalRadius;
    const double radius = r1 * r2 / (r1 + r2), m1 = c.element1.mass, m2 = c.element2.mass, mass = m1 * m2 / (m1 + m2);
    const double g = c.material1->shearModulus, nu = c.material1->poissonsRatio;
    const double young = g / (1 - nu), shear = g / (2 * (2 - nu));
    C3DVector n = c.contactPoint - c.element1.position;
    n *= 1 / n.length();
    const C3DVector v = c.velocity1 - c.velocity2, vn = v.dot(n) * n, vt = v - vn;
    const double log = std::log(c.interaction->restitution), beta = -log / std::sqrt(log * log + pi * pi);
    const double root = std::sqrt(radius * c.normalOverlap), sn = 2 * young * root, st = 8 * shear * root;
    const double spring = 4.0 / 3.0 * young * root * c.normalOverlap;
    c.results.normalForce = -spring * n - 1.826 * beta * std::sqrt(sn * mass) * vn;
    const C3DVector ft = -st * c.tangentialOverlap;
    const double limit = c.interaction->staticFriction * spring;
    c.results.tangentialForce =
        ft.length() > limit ? (limit / ft.length()) * ft : ft - 1.826 * beta * std::sqrt(st * mass) * vt;
    const double load = c.results.normalForce.length() * c.interaction->rollingFriction;
    for (const auto& [element, torque] :
         {std::pair(&c.element1, &c.results.torque1), {&c.element2, &c.results.torque2}})
        *torque = (-load * (c.contactPoint - element->centreOfMass).length() / element->angularVelocity.length()) *
                  element->angularVelocity;
}

} // namespace

int main(int argumentCount, char** arguments)
{
    const unsigned threads = argumentCount > 1 ? static_cast<unsigned>(std::max(1, std::atoi(arguments[1]))) : 1;
    const std::size_t count = threads > 1 ? 40000 : 1000000;
    double bare = 0.0;
    {
        SContacts contacts(count, {}, {});
        bare = seconds([&] {
            for (SContact& contact : contacts.all)
                bareHertzMindlin(contact);
        });
        std::printf("%-48s %8.2f million contacts/s\n", "bare formulas of Hertz and Mindlin", 1e-6 * count / bare);
    }
    for (const SContactModelKind& kind : contactModelKinds()) {
        const std::unique_ptr<IContactModel> model = kind.make(eSphereSphereModel);
        fill(*model);
        SContacts contacts(count, model->requiredProperties(eContactOwner), model->requiredProperties(eParticleOwner));
        model->managerChanged(contacts.contactManager, 0);
        model->managerChanged(contacts.particleManager, 0);
        model->starting(threads);
        const double time = seconds([&] {
            std::vector<std::thread> workers;
            for (unsigned t = 0; t < threads; ++t)
                workers.emplace_back([&, t] {
                    for (std::size_t i = t; i < count; i += threads) {
                        contacts.all[i].threadIndex = t;
                        contacts.all[i].multiThreaded = threads > 1;
                        model->calculateForce(contacts.all[i]);
                    }
                });
            for (std::thread& worker : workers)
                worker.join();
        });
        model->stopping();
        std::printf("%-48s %8.2f million contacts/s, %.2f times the bare time\n", kind.name, 1e-6 * count / time,
                    time / bare);
    }
    return 0;
}
