// One source for a plug-in of every kind and interface version, good ones and broken ones. The build sets:
//
//   TEST_KIND, Kind   1 contact model, 2 external force, 3 particle factory, and its namespace
//   TEST_VERSION      230 for 2.3.0: the form of the plug-in, and what it reports unless TEST_REPORTED says otherwise
//   TEST_INTERFACE    its class, from 2.0.0 on
//   TEST_FAULT        1 no instance, 2 its constructor throws, 3 setup refuses, 4 loading it ends the process,
//                     5 a property has a name that no deck takes
//   GET_VERSION, GET_PREFERENCE_FILE, GET_INSTANCE, RELEASE_INSTANCE   what the kind calls these exports
//
// and an export's name to be another one where it is to be missing.
#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <string>
#include <thread>

#ifndef TEST_FAULT
#define TEST_FAULT 0
#endif
#ifndef TEST_REPORTED
#define TEST_REPORTED (TEST_VERSION / 100) << 16 | (TEST_VERSION / 10 % 10) << 8
#endif

#include <brenmark/plugin/custom_properties.h>
#include <brenmark/plugin/geometry.h>
#include <brenmark/plugin/particles.h>

#if TEST_KIND == 1
#include <brenmark/plugin/contact_model_1.h>
#include <brenmark/plugin/contact_model_2_4.h>
#elif TEST_KIND == 2
#include <brenmark/plugin/external_force_1.h>
#include <brenmark/plugin/external_force_2_3.h>
#else
#include <brenmark/plugin/particle_factory_1.h>
#include <brenmark/plugin/particle_factory_2_1.h>
#endif

using namespace NBrenmark::NApiCore;
using Number = unsigned int;
using Data = ICustomPropertyDataApi_1_0;

// What a test asks of the library beside its interface.
extern "C" {
#define SHOWN __attribute__((visibility("default")))
SHOWN int LIVE_INSTANCES = 0;
SHOWN int STEPS_BEGUN = 0;
SHOWN char SETUP_FILE[fileNameSize] = "";
SHOWN char REPORT[4096] = "";
}

#ifdef TEST_CALLBACKS
#include "callbacks.h"
#endif

/// Writes a text with its NUL.
static void put(char* place, const std::string& text) { std::copy_n(text.c_str(), text.size() + 1, place); }

/// The answer of the work calls: a time step of 1 s and 2 s asks for an error. Those of generation 1 give its number.
static EResult resultAt(double timeStep) { return timeStep == 1.0 ? eRecoverable : timeStep == 2.0 ? eFatal : eOk; }

/// Waits for another caller, half a second at most. \return whether one came
[[maybe_unused]] static bool meetsAnother()
{
    static std::atomic<int> inside{0}, meetings{0};
    const int before = meetings;
    if (++inside > 1)
        ++meetings;
    for (int i = 0; i < 500 && meetings == before; ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    --inside;
    return meetings != before;
}

/// "Wear (owner)" of as many elements as the owner's number and one, and a flag of particles.
[[maybe_unused]] static bool describe(Number index, Number owner, char* name, Number& type, Number& elements,
                                      Number& unit, double* initialValues)
{
    const char* const owners[] = {TEST_FAULT == 5 ? "Wear_2" : "Wear (particle)", "Wear (contact)", "Wear (geometry)",
                                  "Wear (simulation)"};
    if (owner > 3 || index > 1 || (index == 1 && owner != 0))
        return false;
    put(name, index == 1 ? "Is Worn" : owners[owner]);
    type = index == 1 ? eBoolean : eDouble;
    elements = index == 1 ? 1 : owner + 1;
    unit = eLength;
    if (initialValues != nullptr)
        initialValues[0] = 0.5;
    return true;
}

__attribute__((constructor)) static void load()
{
    if (TEST_FAULT == 4)
        std::abort();
}

BRENMARK_PLUGIN_EXPORT Number GET_VERSION() { return TEST_REPORTED; }

#if TEST_VERSION < 200 // ---------------------------------------------------------------- exported functions

BRENMARK_PLUGIN_EXPORT void GET_PREFERENCE_FILE(char* name) { std::copy_n("table of values.txt", 19, name); }

#if TEST_KIND == 1
BRENMARK_PLUGIN_EXPORT int CALCULATEFORCE(const char*, const double*, const double* timeStep, Kind::SContact* contact,
                                          Kind::SContactForces* forces)
{
    forces->normalForce[0] += 10.0 * contact->normalOverlap;
    if (contact->first.properties != nullptr)
        forces->normalForce[1] = *contact->first.properties->getValue(0u);
    return resultAt(*timeStep);
}
#elif TEST_KIND == 2
BRENMARK_PLUGIN_EXPORT int EXTERNALFORCE(const char*, const double* timeStep, const Kind::SParticle* particle,
                                         Kind::SParticleForces* forces)
{
    forces->force[2] -= particle->mass;
    return resultAt(*timeStep);
}
#else
BRENMARK_PLUGIN_EXPORT int CREATEPARTICLE(const char*, const double* time, Kind::SNewParticle* particle, int* created)
{
    put(particle->typeName, *time == 3.0 ? "Nobody" : "Ball");
    *created = 1;
    return resultAt(*time);
}
#endif

#if TEST_VERSION == 110
BRENMARK_PLUGIN_EXPORT void REGISTERNEWPARTICLEPROPERTY(const char* name, const Number* index)
{
    put(REPORT + std::strlen(REPORT), name + (' ' + std::to_string(*index)) + '\n');
}
BRENMARK_PLUGIN_EXPORT void GETNUMBEROFREQUIREDPROPERTIES(Number* count) { *count = 4000000000u; }
BRENMARK_PLUGIN_EXPORT int GETDETAILSFORPROPERTY(const Number* index, char* name, Number* type, Number* elements,
                                                 Number* unit)
{
    return describe(*index, 0, name, *type, *elements, *unit, nullptr);
}
#endif

#else // ---------------------------------------------------------------- an instance

using Interface = Kind::TEST_INTERFACE;

// Of each operation all forms: those that the interface of the version has override it, the others aren't called.
// NOLINTBEGIN(modernize-use-override)
class __attribute__((visibility("default"))) CTestPlugin final : public Interface
{
public:
    CTestPlugin()
    {
        if (TEST_FAULT == 2)
            throw std::runtime_error("no licence");
        ++LIVE_INSTANCES;
    }
    ~CTestPlugin() { --LIVE_INSTANCES; }

    void getPreferenceFileName(char* name) { put(name, "table of values.txt"); }
    bool isThreadSafe() { return TEST_VERSION % 20 == 0; }
    bool usesCustomProperties() { return true; }
    bool query() { return true; }
    double largestScale() { return 2.5; }

    bool setup(const char* preferenceFile)
    {
        std::printf("a library says hello\n"); // which must not get among the results
        put(SETUP_FILE, preferenceFile);
        return TEST_FAULT != 3;
    }
    bool setup(IApiManager_1_0* apiManager, const char* preferenceFile, char* errorText)
    {
        if (TEST_FAULT == 3)
            put(errorText, "line 3 isn't a number");
        return setup(preferenceFile) && apiManager->isAvailable();
    }
    bool starting(IApiManager_1_0* apiManager)
    {
#ifdef TEST_CALLBACKS
        put(REPORT, callBack(*apiManager));
#endif
        return apiManager != nullptr;
    }
    bool starting(IApiManager_1_0* apiManager, Number threadCount) { return starting(apiManager) && threadCount > 0; }
    void stopping(IApiManager_1_0*) {}

#if TEST_KIND == 1
    EResult calculateForce(double, double timeStep, Kind::SContact& contact, Kind::SContactForces& forces)
    {
        if (timeStep == 3.0)
            forces.normalForce[2] = meetsAnother();
        forces.normalForce[0] += 10.0 * contact.normalOverlap;
        contact.tangentialOverlap[1] = 0.0;
        if (contact.properties != nullptr) {
            if (double* const change = contact.properties->getStagedValue(0u))
                *change += 2.0 * *contact.properties->getValue(0u);
        }
        return resultAt(timeStep);
    }
#elif TEST_KIND == 2
    EResult externalForce(double timeStep, const Kind::SParticle& particle, Kind::SParticleForces& forces)
    {
        forces.force[2] -= particle.mass;
        return resultAt(timeStep);
    }
#else
    EResult createParticle(double time, Kind::SNewParticle& particle, bool& created)
    {
        put(particle.typeName, time == 3.0 ? "Nobody" : "Ball");
        created = true;
        return resultAt(time);
    }
#endif
    void setCustomPropertyData(Data*) { ++STEPS_BEGUN; }
    void setCustomPropertyData(Data*, IParticleManagerApi_1_0*, IGeometryManagerApi_1_0*) { ++STEPS_BEGUN; }

    Number getNumberOfRequiredProperties() { return 2; }
    Number getNumberOfRequiredProperties(Number) { return 2; }
    bool getDetailsForProperty(Number index, char* name, Number& type, Number& elements, Number& unit)
    {
        return describe(index, 0, name, type, elements, unit, nullptr);
    }
    bool getDetailsForProperty(Number index, Number owner, char* name, Number& type, Number& elements, Number& unit)
    {
        return describe(index, owner, name, type, elements, unit, nullptr);
    }
    bool getDetailsForProperty(Number index, Number owner, char* name, Number& type, Number& elements, Number& unit,
                               double* initialValues)
    {
        return describe(index, owner, name, type, elements, unit, initialValues);
    }
};
// NOLINTEND(modernize-use-override)

BRENMARK_PLUGIN_EXPORT Interface* GET_INSTANCE() { return TEST_FAULT == 1 ? nullptr : new CTestPlugin; }
BRENMARK_PLUGIN_EXPORT void RELEASE_INSTANCE(Interface* instance) { delete instance; }

#endif
