#include "physics/plugins/contact_model_v1_0_0.h"

#include "physics/plugins/contact_records.h"
#include "physics/plugins/exported_functions.h"

namespace NBrenmark::NApiCm {

bool CPluginContactModelWrapper_V1_0_0::setupPlugin(std::unique_ptr<QLibrary> loaded, const std::string& pluginName)
{
    takeLibrary(std::move(loaded), pluginName);
    preferenceFile = paddedPreferenceFile(*library(), "GETCMPREFERENCEFILE", contactModelPlugins, errors);
    calculate = resolved<CalculateForce>(*library(), "CALCULATEFORCE");
    if (calculate == nullptr)
        reportUnresolved("CALCULATEFORCE", errors);
    return calculate != nullptr;
}

std::unique_ptr<QLibrary> CPluginContactModelWrapper_V1_0_0::unloadPlugin()
{
    calculate = nullptr;
    preferenceFile.clear();
    errors.reset();
    return std::move(boundLibrary);
}

bool CPluginContactModelWrapper_V1_0_0::calculateForce(NBrenmark::SContact& contact)
{
    SPluginContact call(contact, host);
    const auto calculated = [&] {
        return calculate(preferenceFile.c_str(), &contact.time, &contact.timeStep, &call.contact, &call.forces);
    };
    apiLock.lock(); // nothing says whether such a library is thread-safe
    const int error = errors.guarded(-1, calculated);
    apiLock.unlock();
    if (error == noPreferenceFile)
        errors.report(QString("Couldn't find preferences file for external contact model, please place in:\n%1")
                          .arg(QString::fromStdString(preferenceFile)));
    else if (error != 0)
        errors.report(QString("Contact model returned error number %1").arg(error));
    else
        call.giveBack(contact);
    return error == 0;
}

} // namespace NBrenmark::NApiCm
