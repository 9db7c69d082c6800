#include "model/factories/plugins/factory_wrapper.h"

#include "core/shortened.h"
#include "model/factories/plugin_factory_list.h"
#include "model/particle_types.h"

namespace NBrenmark::NApiFactory {

std::string CPluginParticleFactoryWrapper::label() const { return "plug-in factory (" + shortened(name) + ")"; }

QString CPluginParticleFactoryWrapper::typeWord() const { return CPluginParticleFactoryList::word; }

void CPluginParticleFactoryWrapper::takeLibrary(std::unique_ptr<QLibrary> loaded, const QString& factoryName,
                                                CPluginParticleFactoryList* list)
{
    unloadPlugin();
    boundLibrary = std::move(loaded);
    name = factoryName;
    owner = list;
    errors.setTitle(QString("Factory Plugin (%1)").arg(name));
}

std::unique_ptr<CParticleFactory>
CPluginParticleFactoryWrapper::boundCopy(std::unique_ptr<CPluginParticleFactoryWrapper> copy) const
{
    if (library() == nullptr || !copy->setupPlugin(std::make_unique<QLibrary>(library()->fileName()), name, owner))
        return nullptr;
    copyCommonTo(*copy);
    copy->libraryName = libraryName;
    return copy;
}

bool CPluginParticleFactoryWrapper::checkType(const CParticleTypes& types, SNewParticle& particle, bool created)
{
    particle.typeName[typeNameSize - 1] = '\0';
    const QString typeName = QString::fromUtf8(particle.typeName);
    const bool isThere = !created || types.find(typeName) != nullptr;
    if (!isThere)
        errors.report(QString("Plugin factory tried to create particle of type that did not exist (%1)").arg(typeName));
    return isThere;
}

SNewParticle emptyParticle()
{
    SNewParticle particle{};
    particle.scale = 1.0;
    particle.orientation[0] = 1.0;
    return particle;
}

} // namespace NBrenmark::NApiFactory
