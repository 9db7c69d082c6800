#pragma once
// The instance that a library of generation 2 makes, from its making to its release: what is asked of it once, its
// preference file, the API manager that it was given, and the custom properties that it needs.

#include "physics/plugins/instance_calls.h"
#include "physics/plugins/plugin_library.h"
#include "physics/plugins/plugin_properties.h"

#include <QFileInfo>

namespace NBrenmark {

/// Whether an interface class knows custom properties.
template <class TPlugin, class = void>
inline constexpr bool knowsCustomProperties = false;
template <class TPlugin>
inline constexpr bool knowsCustomProperties<TPlugin, std::void_t<decltype(&TPlugin::usesCustomProperties)>> = true;

/// What a kind of plug-in calls its exports, and its texts. %1 is the export's name.
struct SInstanceWords
{
    const char* getInstance;
    const char* releaseInstance;
    QString unresolved;
    QString noInstance;
    QString setupFailed;
    QString setupReason; ///< where the plug-in gives no reason; empty for nothing
};

template <class TPlugin, class TCalls>
class CPluginInstance
{
public:
    ~CPluginInstance() { release(); }

    /// Makes the instance and sets it up. \return false, with the reason logged, if that can't be
    bool make(QLibrary& library, const QString& name, const SInstanceWords& words, CPluginErrors& errors);
    /// Gives the instance back to its library. Nothing happens the second time.
    void release();

    bool isMade() const { return plugin != nullptr; }
    NApiCore::IApiManager_1_0* manager() const
    {
        return static_cast<NApiCore::IApiManager_1_0*>(apiManager.get()); // that is what its identifier stands for
    }
    /// The properties that it needs of an owner.
    RequiredProperties requiredProperties(unsigned int ownerType, CPluginErrors& errors);

    TPlugin* plugin = nullptr;
    IPluginHost* host = nullptr; ///< not owned
    std::string preferenceFile;  ///< path; empty without one
    bool isThreadSafe = false;
    bool usesCustomProperties = false;
    SPluginStepData stepData;

private:
    bool setUp(const QString& name, const SInstanceWords& words, CPluginErrors& errors);
    void askOnce(const QString& folder);

    typename TPlugin::ReleaseInstance releaseInstance = nullptr;
    std::unique_ptr<NApiCore::IApi> apiManager;
    CPluginProperties properties;
};

template <class TPlugin, class TCalls>
bool CPluginInstance<TPlugin, TCalls>::make(QLibrary& library, const QString& name, const SInstanceWords& words,
                                            CPluginErrors& errors)
{
    const auto getInstance = resolved<typename TPlugin::GetInstance>(library, words.getInstance);
    const auto giveBack = resolved<typename TPlugin::ReleaseInstance>(library, words.releaseInstance);
    for (const auto& [isThere, exportName] :
         {std::pair(getInstance != nullptr, words.getInstance), std::pair(giveBack != nullptr, words.releaseInstance)})
        if (!isThere) {
            errors.report(words.unresolved.arg(exportName));
            return false;
        }
    plugin = errors.guarded(static_cast<TPlugin*>(nullptr), getInstance);
    if (plugin == nullptr) {
        errors.reportAlways(words.noInstance);
        return false;
    }
    releaseInstance = giveBack;
    const bool isReady = errors.guarded(false, [&] {
        askOnce(QFileInfo(library.fileName()).path());
        return setUp(name, words, errors);
    });
    if (!isReady)
        release();
    return isReady;
}

template <class TPlugin, class TCalls>
void CPluginInstance<TPlugin, TCalls>::askOnce(const QString& folder)
{
    std::array<char, NApiCore::fileNameSize> fileName{};
    plugin->getPreferenceFileName(fileName.data());
    fileName.back() = '\0';
    if (fileName.front() != '\0')
        preferenceFile = folder.toStdString() + '/' + fileName.data();
    isThreadSafe = plugin->isThreadSafe();
    if constexpr (knowsCustomProperties<TPlugin>)
        usesCustomProperties = plugin->usesCustomProperties();
}

template <class TPlugin, class TCalls>
bool CPluginInstance<TPlugin, TCalls>::setUp(const QString& name, const SInstanceWords& words, CPluginErrors& errors)
{
    const CPluginBinding* const binding = CPluginBinding::current();
    host = binding != nullptr ? &binding->host : nullptr;
    apiManager = host != nullptr ? host->createApi(NApiCore::eApiManager, 1, 0) : nullptr;
    if (apiManager == nullptr) {
        errors.report(QString("Unable to create API Manager instance for Plugin (%1)").arg(name));
        return false;
    }
    SPluginSetup setup{manager(), preferenceFile.c_str()};
    if (TCalls::setup(*plugin, setup))
        return true;
    errors.report(words.setupFailed);
    setup.errorText.back() = '\0';
    const QString reason =
        setup.errorText.front() != '\0' ? QString::fromUtf8(setup.errorText.data()) : words.setupReason;
    if (!reason.isEmpty())
        reportPluginError("Preference File Error", reason);
    return false;
}

template <class TPlugin, class TCalls>
void CPluginInstance<TPlugin, TCalls>::release()
{
    if (plugin != nullptr) {
        CPluginErrors errors;
        errors.attempt([this] { releaseInstance(plugin); });
    }
    plugin = nullptr;
    releaseInstance = nullptr;
    stepData = SPluginStepData();
    apiManager.reset();
    preferenceFile.clear();
    isThreadSafe = false;
    usesCustomProperties = false;
    properties.clear();
}

template <class TPlugin, class TCalls>
RequiredProperties CPluginInstance<TPlugin, TCalls>::requiredProperties(unsigned int ownerType, CPluginErrors& errors)
{
    if (plugin == nullptr || !usesCustomProperties || !TCalls::hasPropertiesOf(ownerType))
        return {};
    const auto ask = [&](unsigned int index, SPluginProperty& property) {
        return TCalls::property(*plugin, index, ownerType, property);
    };
    return properties.of(
        ownerType, [&] { return TCalls::propertyCount(*plugin, ownerType); }, ask, errors);
}

} // namespace NBrenmark
