#pragma once
// How the instances of generation 2 are called. Each structure has the calls that changed with a version; the rest is
// that of the one before. TPlugin is the interface class of the version.

#include "physics/plugins/plugin_host.h"
#include "properties/custom_property_manager.h"

#include <brenmark/plugin/geometry.h>
#include <brenmark/plugin/particles.h>
#include <brenmark/plugin/plugin.h>

#include <array>
#include <memory>
#include <type_traits>

namespace NBrenmark {

/// What setup gets, and the text that it may give.
struct SPluginSetup
{
    NApiCore::IApiManager_1_0* apiManager;
    const char* preferenceFile;
    std::array<char, NApiCore::errorTextSize> errorText{};
};

/// What a plug-in says of one required property.
struct SPluginProperty
{
    std::array<char, NApiCore::propertyNameSize> name{};
    unsigned int dataType = NApiCore::eDouble;
    unsigned int numberOfElements = 1;
    unsigned int unitType = NApiCore::ePlainNumber;
    std::array<double, NApiCore::mostElements> initialValues{};
};

/// What is handed over before a step, until the next one. All of it may be null.
struct SPluginStepData
{
    std::unique_ptr<NApiCore::ICustomPropertyDataApi_1_0> simulation;
    std::unique_ptr<NApiCore::IApi> particles;
    std::unique_ptr<NApiCore::IApi> geometry;
};

/// The first versions: custom properties are those of particles, and nothing is handed over before a step.
template <class TPlugin>
struct SFirstCalls
{
    static bool hasPropertiesOf(unsigned int ownerType) { return ownerType == eParticleOwner; }
    static bool setup(TPlugin& plugin, SPluginSetup& setup) { return plugin.setup(setup.preferenceFile); }
    static bool starting(TPlugin& plugin, NApiCore::IApiManager_1_0* manager, quint32 /*threadCount*/)
    {
        return plugin.starting(manager);
    }
    static unsigned int propertyCount(TPlugin& plugin, unsigned int /*ownerType*/)
    {
        return plugin.getNumberOfRequiredProperties();
    }
    static bool property(TPlugin& plugin, unsigned int index, unsigned int /*ownerType*/, SPluginProperty& property)
    {
        return plugin.getDetailsForProperty(index, property.name.data(), property.dataType, property.numberOfElements,
                                            property.unitType);
    }
    static void beginStep(TPlugin& /*plugin*/, IPluginHost& /*host*/, SPluginStepData& /*data*/) {}
    static bool query(TPlugin& /*plugin*/) { return false; }
};

/// Since then: the API manager and a text at setup, and properties of all four owners.
template <class TPlugin>
struct SOwnerCalls : SFirstCalls<TPlugin>
{
    static bool hasPropertiesOf(unsigned int ownerType) { return ownerType <= eSimulationOwner; }
    static bool setup(TPlugin& plugin, SPluginSetup& setup)
    {
        return plugin.setup(setup.apiManager, setup.preferenceFile, setup.errorText.data());
    }
    static unsigned int propertyCount(TPlugin& plugin, unsigned int ownerType)
    {
        return plugin.getNumberOfRequiredProperties(ownerType);
    }
    static bool property(TPlugin& plugin, unsigned int index, unsigned int ownerType, SPluginProperty& property)
    {
        return plugin.getDetailsForProperty(index, ownerType, property.name.data(), property.dataType,
                                            property.numberOfElements, property.unitType);
    }
};

/// Since then: initial values, the properties of the simulation before each step, and for contact models the number of
/// threads.
template <class TPlugin>
struct SInitialValueCalls : SOwnerCalls<TPlugin>
{
    static bool starting(TPlugin& plugin, NApiCore::IApiManager_1_0* manager, quint32 threadCount)
    {
        if constexpr (std::is_invocable_v<decltype(&TPlugin::starting), TPlugin&, NApiCore::IApiManager_1_0*, quint32>)
            return plugin.starting(manager, threadCount);
        else
            return plugin.starting(manager);
    }
    static bool property(TPlugin& plugin, unsigned int index, unsigned int ownerType, SPluginProperty& property)
    {
        return plugin.getDetailsForProperty(index, ownerType, property.name.data(), property.dataType,
                                            property.numberOfElements, property.unitType,
                                            property.initialValues.data());
    }
    static void beginStep(TPlugin& plugin, IPluginHost& host, SPluginStepData& data)
    {
        data.simulation = host.simulationProperties();
        plugin.setCustomPropertyData(data.simulation.get());
    }
};

/// Since then: a query of the solver, and managers of particles and geometry before each step.
template <class TPlugin>
struct SManagerCalls : SInitialValueCalls<TPlugin>
{
    static void beginStep(TPlugin& plugin, IPluginHost& host, SPluginStepData& data)
    {
        data.simulation = host.simulationProperties();
        data.particles = host.createApi(NApiCore::eParticleManager, 1, 0);
        data.geometry = host.createApi(NApiCore::eGeometryManager, 1, 0);
        plugin.setCustomPropertyData(data.simulation.get(),
                                     static_cast<NApiCore::IParticleManagerApi_1_0*>(data.particles.get()),
                                     static_cast<NApiCore::IGeometryManagerApi_1_0*>(data.geometry.get()));
    }
    static bool query(TPlugin& plugin) { return plugin.query(); }
};

} // namespace NBrenmark
