// What the contact models of all interface versions share.
#include "physics/plugins/contact_model_wrapper.h"

#include "physics/model_registry.h"

#include <brenmark/plugin/plugin.h>

namespace NBrenmark::NApiCm {

quint32 IPluginContactModelWrapper::chainRole() const { return foreignChainRole; }

quint32 IPluginContactModelWrapper::chainPosition() const { return foreignChainPosition; }

QString IPluginContactModelWrapper::label() const
{
    return modelType == eSphereSphereModel ? QStringLiteral("Sphere To Sphere") : QStringLiteral("Sphere To Geometry");
}

void IPluginContactModelWrapper::takeLibrary(std::unique_ptr<QLibrary> loaded, const std::string& pluginName)
{
    unloadPlugin();
    boundLibrary = std::move(loaded);
    name = pluginName;
    errors.setTitle(QString("%1 Contact Model Plugin (%2)").arg(label(), modelName()));
}

bool IPluginContactModelWrapper::reportResult(int result)
{
    if (result == NApiCore::eRecoverable)
        errors.report(QString("%1 - %2 Contact Model\ncalculateForce() method returned a recoverable error.")
                          .arg(label(), modelName()));
    else if (result != NApiCore::eOk)
        errors.reportAlways(
            QString("%1 - %2 Contact Model\ncalculateForce() method returned a fatal error.\nProcessing will halt.")
                .arg(label(), modelName()));
    return result == NApiCore::eOk || result == NApiCore::eRecoverable;
}

} // namespace NBrenmark::NApiCm
