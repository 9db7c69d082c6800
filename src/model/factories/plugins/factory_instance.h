#pragma once
// Particle factories of generation 2: an instance of the library's. What differs by version is in TCalls and in the
// interface class TPlugin. TSelf is the class of the version.

#include "model/factories/plugins/factory_wrapper.h"
#include "physics/plugins/plugin_instance.h"

namespace NBrenmark::NApiFactory {

template <class TSelf, class TPlugin, class TCalls>
class CFactoryOfInstance : public CPluginParticleFactoryWrapper
{
public:
    bool setupPlugin(std::unique_ptr<QLibrary> loaded, const QString& factoryName,
                     CPluginParticleFactoryList* list) override
    {
        takeLibrary(std::move(loaded), factoryName, list);
        return instance.make(*library(), name, words(), errors);
    }
    void unloadPlugin() override
    {
        instance.release();
        errors.reset();
        boundLibrary.reset();
    }
    std::unique_ptr<CParticleFactory> clone() const override { return boundCopy(std::make_unique<TSelf>()); }

    bool isThreadSafe() const override { return instance.isThreadSafe; }
    bool starting() override
    {
        const bool isReady = instance.isMade() && errors.guarded(false, [this] {
            return TCalls::starting(*instance.plugin, instance.manager(), 1);
        });
        if (!isReady)
            errors.report(QString("Plugin indicated it is not ready to start processing at this time."));
        return isReady;
    }
    void stopping() override
    {
        if (instance.isMade())
            errors.attempt([this] { instance.plugin->stopping(instance.manager()); });
    }
    bool createParticle(double time, const CParticleTypes& types, SNewParticle& particle, bool& created) override
    {
        particle = emptyParticle();
        created = false;
        if (!instance.isMade())
            return true;
        if (!instance.isThreadSafe)
            apiLock.lock();
        const NApiCore::EResult result =
            errors.guarded(NApiCore::eFatal, [&] { return instance.plugin->createParticle(time, particle, created); });
        if (!instance.isThreadSafe)
            apiLock.unlock();
        if (result == NApiCore::eRecoverable)
            errors.report(QString("Plugin factories createParticle() method returned a recoverable error."));
        else if (result != NApiCore::eOk)
            errors.reportAlways(
                QString("Plugin factories createParticle() method returned a fatal error.\nProcessing will halt."));
        const bool isOfKnownType = result != NApiCore::eOk || checkType(types, particle, created);
        created = created && result == NApiCore::eOk && isOfKnownType;
        return (result == NApiCore::eOk && isOfKnownType) || result == NApiCore::eRecoverable;
    }

protected:
    mutable CPluginInstance<TPlugin, TCalls> instance; ///< the answers to its questions are a cache

private:
    static SInstanceWords words()
    {
        return {"GETFACTORYINSTANCE",
                "RELEASEFACTORYINSTANCE",
                QStringLiteral("Cannot resolve function: %1"),
                QStringLiteral("Plugin factories GETFACTORYINSTANCE() method did not return a valid plugin instance."),
                QStringLiteral("Plugin factories setup() method return failure."),
                QString()};
    }
};

} // namespace NBrenmark::NApiFactory
