// The table of interface versions of particle factories.
#include "model/factories/plugins/particle_factories.h"

#include "core/version.h"
#include "model/factories/plugin_factory_list.h"
#include "model/factories/plugins/factory_v1_0_0.h"
#include "model/factories/plugins/factory_v2_0_0.h"
#include "model/factories/plugins/factory_v2_1_0.h"

namespace NBrenmark::NApiFactory {

using FactoryVersionRow = SPluginVersion<IPluginParticleFactoryWrapper>;

template <class TWrapper>
static FactoryVersionRow factoryVersion(quint32 major, quint32 minor)
{
    return {makeVersion(major, minor, 0),
            []() -> std::unique_ptr<IPluginParticleFactoryWrapper> { return std::make_unique<TWrapper>(); }};
}

static const std::vector<FactoryVersionRow>& factoryVersions()
{
    static const std::vector<FactoryVersionRow> rows = {
        factoryVersion<CPluginParticleFactoryWrapper_V1_0_0>(1, 0),
        factoryVersion<CPluginParticleFactoryWrapper_V2_0_0>(2, 0),
        factoryVersion<CPluginParticleFactoryWrapper_V2_1_0>(2, 1),
    };
    return rows;
}

std::unique_ptr<IPluginParticleFactoryWrapper> bindParticleFactory(SLoadedLibrary loaded, const QString& name,
                                                                   CPluginParticleFactoryList* list)
{
    const FactoryVersionRow* const row = versionRow(factoryVersions(), loaded.version);
    if (row == nullptr) {
        reportUnsupportedVersion(loaded.version, name,
                                 QString("The plugin factory interface version is not supported,\nthe external "
                                         "factory must use interface version %1")
                                     .arg(versionText(factoryVersions().back().version)));
        return nullptr;
    }
    std::unique_ptr<IPluginParticleFactoryWrapper> wrapper = row->make();
    return wrapper->setupPlugin(std::move(loaded.library), name, list) ? std::move(wrapper) : nullptr;
}

std::unique_ptr<IPluginParticleFactoryWrapper> bindParticleFactory(const QString& libraryName, const QString& name,
                                                                   CPluginParticleFactoryList* list)
{
    SLoadedLibrary loaded = loadPluginLibrary(particleFactoryPlugins, libraryName);
    if (loaded.library == nullptr)
        return nullptr;
    std::unique_ptr<IPluginParticleFactoryWrapper> factory = bindParticleFactory(std::move(loaded), name, list);
    if (factory != nullptr)
        factory->libraryName = libraryName;
    return factory;
}

void connectCustomProperties(const CPluginParticleFactoryList& list, CCustomPropertyManager* properties)
{
    for (quint32 index = 0; index < list.count(); ++index)
        list.factory(index)->connectCustomProperties(properties);
}

} // namespace NBrenmark::NApiFactory
