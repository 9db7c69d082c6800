#include "model/factories/plugins/factory_v1_0_0.h"

#include "physics/plugins/exported_functions.h"

namespace NBrenmark::NApiFactory {

bool CPluginParticleFactoryWrapper_V1_0_0::setupPlugin(std::unique_ptr<QLibrary> loaded, const QString& factoryName,
                                                       CPluginParticleFactoryList* list)
{
    takeLibrary(std::move(loaded), factoryName, list);
    preferenceFile = paddedPreferenceFile(*library(), "GETFACTPREFERENCEFILE", particleFactoryPlugins, errors);
    create = resolved<CreateParticle>(*library(), "CREATEPARTICLE");
    if (create == nullptr)
        reportUnresolved("CREATEPARTICLE", errors);
    return create != nullptr;
}

void CPluginParticleFactoryWrapper_V1_0_0::unloadPlugin()
{
    create = nullptr;
    preferenceFile.clear();
    errors.reset();
    boundLibrary.reset();
}

std::unique_ptr<CParticleFactory> CPluginParticleFactoryWrapper_V1_0_0::clone() const
{
    return boundCopy(std::make_unique<CPluginParticleFactoryWrapper_V1_0_0>());
}

bool CPluginParticleFactoryWrapper_V1_0_0::createParticle(double time, const CParticleTypes& types,
                                                          SNewParticle& particle, bool& created)
{
    particle = emptyParticle();
    created = false;
    int isCreated = 0;
    apiLock.lock(); // nothing says whether such a library is thread-safe
    const int error = errors.guarded(-1, [&] { return create(preferenceFile.c_str(), &time, &particle, &isCreated); });
    apiLock.unlock();
    if (error == noPreferenceFile)
        errors.report(QString("Couldn't find preferences file for plugin factory, please place in:\n%1")
                          .arg(QString::fromStdString(preferenceFile)));
    else if (error != 0)
        errors.report(QString("Plugin Factory returned error number %1").arg(error));
    created = error == 0 && isCreated != 0 && checkType(types, particle, true);
    return error == 0 && (created || isCreated == 0);
}

} // namespace NBrenmark::NApiFactory
