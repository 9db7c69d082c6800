#pragma once
// Contact models of generation 2: an instance of the library's. What differs by version is in TCalls and in the
// interface class TPlugin.

#include "physics/plugins/contact_model_wrapper.h"
#include "physics/plugins/contact_records.h"
#include "physics/plugins/plugin_instance.h"

namespace NBrenmark::NApiCm {

template <class TPlugin, class TCalls>
class CContactModelOfInstance : public IPluginContactModelWrapper
{
public:
    using IPluginContactModelWrapper::IPluginContactModelWrapper;

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
    void beginStep(const std::vector<CCustomPropertyData*>& /*particles*/) override
    {
        if (instance.isMade())
            errors.attempt([this] { TCalls::beginStep(*instance.plugin, *instance.host, instance.stepData); });
    }
    bool starting(quint32 threadCount) override
    {
        const bool isReady = instance.isMade() && errors.guarded(false, [&] {
            return TCalls::starting(*instance.plugin, instance.manager(), threadCount);
        });
        if (!isReady)
            errors.report(
                text("%1 - %2 Contact Model\nPlugin indicated it is not ready to start processing at this time."));
        return isReady;
    }
    void stopping() override
    {
        if (instance.isMade())
            errors.attempt([this] { instance.plugin->stopping(instance.manager()); });
    }
    bool calculateForce(NBrenmark::SContact& contact) override
    {
        if (!instance.isMade())
            return true;
        SPluginContact call(contact, instance.host);
        const bool isLocked = contact.multiThreaded && !instance.isThreadSafe;
        if (isLocked)
            apiLock.lock();
        const NApiCore::EResult result = errors.guarded(NApiCore::eFatal, [&] {
            return instance.plugin->calculateForce(contact.time, contact.timeStep, call.contact, call.forces);
        });
        if (isLocked)
            apiLock.unlock();
        if (result == NApiCore::eOk)
            call.giveBack(contact);
        return reportResult(result);
    }

private:
    /// A text that begins with label and name.
    QString text(const char* words) const { return QString(words).arg(label(), modelName()); }
    SInstanceWords words() const
    {
        return {"GETCMINSTANCE",
                "RELEASECMINSTANCE",
                QString("%1 - %2 Contact Model\nCould not resolve method in plugin file (%3).")
                    .arg(label(), modelName(), QStringLiteral("%1")),
                text("%1 - %2 Contact Model\nGETINSTANCE() method did not return a valid plugin instance."),
                text("%1 - %2 Contact Model\nPlugin's setup method return failure."),
                QString()};
    }

    mutable CPluginInstance<TPlugin, TCalls> instance; ///< the answers to its questions are a cache
};

} // namespace NBrenmark::NApiCm
