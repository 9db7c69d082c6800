#pragma once
// External forces of generation 2: an instance of the library's. What differs by version is in TCalls and in the
// interface class TPlugin.

#include "physics/plugins/external_force_wrapper.h"
#include "physics/plugins/plugin_instance.h"

namespace NBrenmark::NApiPbf {

template <class TPlugin, class TCalls>
class CExternalForceOfInstance : public IPluginExternalForceWrapper
{
public:
    bool setupPlugin(std::unique_ptr<QLibrary> loaded, const std::string& pluginName) override
    {
        takeLibrary(std::move(loaded), pluginName);
        return instance.make(*library(), modelName(), words(), errors);
    }
    std::unique_ptr<QLibrary> unloadPlugin() override
    {
        instance.release();
        errors.reset();
        return std::move(boundLibrary);
    }

    RequiredProperties requiredProperties(unsigned int ownerType) const override
    {
        return instance.requiredProperties(ownerType, errors);
    }
    bool pluginQuery() const override
    {
        return instance.isMade() && errors.guarded(false, [this] { return TCalls::query(*instance.plugin); });
    }
    void beginStep() override
    {
        if (instance.isMade())
            errors.attempt([this] { TCalls::beginStep(*instance.plugin, *instance.host, instance.stepData); });
    }
    bool starting() override
    {
        const bool isReady = instance.isMade() && errors.guarded(false, [this] {
            return TCalls::starting(*instance.plugin, instance.manager(), 1);
        });
        if (!isReady)
            errors.report(
                text("%1 - Particle Body Force\nPlugin indicated it is not ready to start processing at this time."));
        return isReady;
    }
    void stopping() override
    {
        if (instance.isMade())
            errors.attempt([this] { instance.plugin->stopping(instance.manager()); });
    }
    bool calculateForce(SParticleForce& particle) override
    {
        if (!instance.isMade())
            return true;
        SPluginParticle call(particle, instance.host);
        const bool isLocked = particle.multiThreaded && !instance.isThreadSafe;
        if (isLocked)
            apiLock.lock();
        const NApiCore::EResult result = errors.guarded(NApiCore::eFatal, [&] {
            return instance.plugin->externalForce(particle.timeStep, call.particle, call.forces);
        });
        if (isLocked)
            apiLock.unlock();
        if (result == NApiCore::eOk)
            call.giveBack(particle);
        return reportResult(result);
    }

private:
    /// A text that begins with the name.
    QString text(const char* words) const { return QString(words).arg(modelName()); }
    SInstanceWords words() const
    {
        return {"GETPBFINSTANCE",
                "RELEASEPBFINSTANCE",
                QString("%1 - Particle Body Force\nCould not resolve method in plugin file (%2).")
                    .arg(modelName(), QStringLiteral("%1")),
                text("%1 - Particle Body Force\nGETINSTANCE() method did not return a valid plugin instance."),
                text("%1 - Particle Body Force\nPlugin's setup method return failure."),
                QStringLiteral("Could not initialise the configuration for this Particle Body Force model.")};
    }

    mutable CPluginInstance<TPlugin, TCalls> instance; ///< the answers to its questions are a cache
};

} // namespace NBrenmark::NApiPbf
