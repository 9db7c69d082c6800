#pragma once
// What the test plug-in does when it is started: it goes through every host interface, changes what can be changed, and
// says in lines what it was told.

#include <brenmark/plugin/custom_properties.h>
#include <brenmark/plugin/fields.h>
#include <brenmark/plugin/geometry.h>
#include <brenmark/plugin/particles.h>
#include <brenmark/plugin/simulation.h>

#include <cstdio>
#include <initializer_list>
#include <memory>
#include <string>

/// An object of an interface, which is given back at the end of its scope.
template <class TInterface>
static std::shared_ptr<TInterface> borrow(IApiManager_1_0& manager, EApi identifier, unsigned int minor)
{
    return {static_cast<TInterface*>(manager.getApi(identifier, 1, minor)),
            [&manager](TInterface* api) { manager.releaseApi(api); }};
}

/// A number of any type.
struct SNumber
{
    template <class T>
    SNumber(T number) : value(static_cast<double>(number))
    {}
    double value;
};

/// "name: 1 2.5" and a line end. In braces what gives the numbers is called in their order.
static std::string line(const char* name, std::initializer_list<SNumber> numbers)
{
    std::string text(name);
    for (const SNumber& number : numbers) {
        char digits[32];
        std::snprintf(digits, sizeof digits, " %g", number.value);
        text += digits;
    }
    return text + '\n';
}

static void visitParticles(IApiManager_1_0& manager, std::string& report)
{
    const auto particles = borrow<IParticleManagerApi_1_2>(manager, eParticleManager, 1); // 1.1 is answered by 1.2
    unsigned int major = 0, minor = 0;
    particles->getVersion(major, minor);
    report += line("particles", {major, minor, particles->getIdentifier(), particles->isAvailable(),
                                 particles->isWritable(), particles->getNumberOfParticles()});
    report += line("scale", {particles->setParticleScale(1, 1.75), particles->getParticleScale(1),
                             particles->setParticleScale(999, 2.0), particles->getParticleScale(999)});
    double places[9] = {};
    report += line("spheres", {particles->getSpherePositions(1, places), places[0], places[1], places[2],
                               particles->getSpherePositions(999, places)});
    report += line("types",
                   {particles->getTypeIndex("Rod"), particles->getTypeIndex("Cube"), particles->getTypeIndex(nullptr)});
    report += line("particle properties", {particles->setCustomProperty("Ball", "Pair", 1, 21.0),
                                           particles->setCustomPropertyAll("Ball", "Tag", 22.0),
                                           particles->setCustomProperty("Rod", 1u, 0, 23.0),
                                           particles->setCustomPropertyAll("Rod", 0u, 24.0)});
    report += line("refused", {particles->setCustomProperty("Ball", "Pair", 2, 0.0),
                               particles->setCustomPropertyAll("Ball", "Later", 0.0),
                               particles->setCustomProperty("Cube", "Pair", 0, 0.0),
                               particles->setCustomPropertyAll("Rod", 7u, 0.0)});
}

static void visitGeometryAndSimulation(IApiManager_1_0& manager, std::string& report)
{
    const auto geometry = borrow<IGeometryManagerApi_1_1>(manager, eGeometryManager, 1);
    report += line("geometry",
                   {geometry->isAvailable(), geometry->setCustomProperty("Hopper", "Wear", 31.0),
                    geometry->setCustomProperty("Plate", 1u, 1.0), geometry->setCustomProperty("Lid", "Wear", 0.0),
                    geometry->setCustomProperty("Plate", "Tear", 0.0), geometry->setCustomProperty("Plate", 2u, 0.0)});
    const auto simulation = borrow<ISimulationManagerApi_1_1>(manager, eSimulationManager, 1);
    report += line("simulation",
                   {simulation->isAvailable(), simulation->setCustomPropertyAll("Torque", 41.0),
                    simulation->setCustomProperty("Torque", 1, 42.0), simulation->setCustomProperty(0u, 2, 43.0),
                    simulation->setCustomProperty(0u, 3, 0.0), simulation->setCustomPropertyAll(1u, 0.0)});
}

static void visitProperties(IApiManager_1_0& manager, std::string& report)
{
    for (const EApi owner : {eContactProperties, eGeometryProperties, eParticleProperties, eSimulationProperties}) {
        const auto properties = borrow<ICustomPropertyManagerApi_1_0>(manager, owner, 0);
        report += line("definitions", {properties->getIdentifier(), properties->getPropertyCount()});
    }
    const auto particles = borrow<ICustomPropertyManagerApi_1_0>(manager, eParticleProperties, 0);
    SPropertyDetails details;
    const bool isThere = particles->getPropertyDetails("Pair", details);
    report += line(details.name, {isThere, details.index, details.ownerType, details.dataType, details.numberOfElements,
                                  details.unitType, details.finalized});
    report += line("later", {particles->getPropertyDetails(2u, details), details.finalized,
                             particles->getPropertyDetails(9u, details), particles->getPropertyIndex(nullptr),
                             particles->getPropertyIndex("Tear")});
}

static void visitField(IApiManager_1_0& manager, std::string& report, const char* name)
{
    const auto fields = borrow<IFieldManagerApi_1_0>(manager, eFieldManager, 0);
    IFieldApi_1_0* const field = fields->getField(eField, 1, 0, name);
    double x = -1.0, y = -1.0, z = -1.0, value = -1.0;
    const bool isVector = field->getVector(2.0, 3.0, 5.0, 0, 1, x, y, z);
    const bool isScalar = field->getScalar(2.0, 3.0, 5.0, 0, 1, value);
    report += line(name, {field->getIdentifier(), field->isScalar(), isVector, x, y, z, isScalar, value});
    manager.releaseApi(field);
}

/// \return a line for each thing that was asked
static std::string callBack(IApiManager_1_0& manager)
{
    std::string report;
    manager.releaseApi(&manager); // it stays
    report += line("refused",
                   {manager.getApi(3, 1, 0) != nullptr, manager.getApi(eParticleManager, 1, 3) != nullptr,
                    manager.getApi(eGeometryManager, 2, 0) != nullptr, manager.getApi(eApiManager, 1, 1) != nullptr,
                    manager.getApi(ePropertyData, 1, 0) != nullptr, manager.getApi(99, 1, 0) != nullptr});
    visitParticles(manager, report);
    visitGeometryAndSimulation(manager, report);
    visitProperties(manager, report);
    for (const char* const name : {"space", "flat", "heat"})
        visitField(manager, report, name);
    return report;
}
