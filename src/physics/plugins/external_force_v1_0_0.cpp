#include "physics/plugins/external_force_v1_0_0.h"

#include "physics/plugins/exported_functions.h"

namespace NBrenmark::NApiPbf {

bool CPluginExternalForceWrapper_V1_0_0::setupPlugin(std::unique_ptr<QLibrary> loaded, const std::string& pluginName)
{
    takeLibrary(std::move(loaded), pluginName);
    preferenceFile = paddedPreferenceFile(*library(), "GETEFPREFERENCEFILE", externalForcePlugins, errors);
    externalForce = resolved<ExternalForce>(*library(), "EXTERNALFORCE");
    if (externalForce == nullptr)
        reportUnresolved("EXTERNALFORCE", errors);
    return externalForce != nullptr;
}

std::unique_ptr<QLibrary> CPluginExternalForceWrapper_V1_0_0::unloadPlugin()
{
    externalForce = nullptr;
    preferenceFile.clear();
    errors.reset();
    return std::move(boundLibrary);
}

bool CPluginExternalForceWrapper_V1_0_0::calculateForce(SParticleForce& particle)
{
    SPluginParticle call(particle, host);
    const auto calculated = [&] {
        return externalForce(preferenceFile.c_str(), &particle.timeStep, &call.particle, &call.forces);
    };
    apiLock.lock(); // nothing says whether such a library is thread-safe
    const int error = errors.guarded(-1, calculated);
    apiLock.unlock();
    if (error == noPreferenceFile)
        errors.report(QString("Couldn't find preferences file for external force library, please place in:\n%1")
                          .arg(QString::fromStdString(preferenceFile)));
    else if (error != 0)
        errors.report(QString("External force library returned error number %1").arg(error));
    else
        call.giveBack(particle);
    return error == 0;
}

} // namespace NBrenmark::NApiPbf
