// The table of interface versions of contact models.
#include "physics/plugins/contact_models.h"

#include "core/version.h"
#include "physics/plugins/contact_model_v1_1_0.h"
#include "physics/plugins/contact_model_v2_0_0.h"
#include "physics/plugins/contact_model_v2_2_0.h"
#include "physics/plugins/contact_model_v2_3_0.h"
#include "physics/plugins/contact_model_v2_5_0.h"

namespace NBrenmark::NApiCm {

using VersionRow = SPluginVersion<IPluginContactModelWrapper, quint32>;

template <class TWrapper>
static VersionRow contactVersion(quint32 major, quint32 minor)
{
    return {makeVersion(major, minor, 0), [](quint32 modelType) -> std::unique_ptr<IPluginContactModelWrapper> {
                return std::make_unique<TWrapper>(modelType);
            }};
}

static const std::vector<VersionRow>& contactVersions()
{
    static const std::vector<VersionRow> rows = {
        contactVersion<CPluginContactModelWrapper_V1_0_0>(1, 0),
        contactVersion<CPluginContactModelWrapper_V1_1_0>(1, 1),
        contactVersion<CPluginContactModelWrapper_V2_0_0>(2, 0),
        contactVersion<CPluginContactModelWrapper_V2_1_0>(2, 1),
        contactVersion<CPluginContactModelWrapper_V2_2_0>(2, 2),
        contactVersion<CPluginContactModelWrapper_V2_3_0>(2, 3),
        contactVersion<CPluginContactModelWrapper_V2_4_0>(2, 4),
        contactVersion<CPluginContactModelWrapper_V2_5_0>(2, 5),
    };
    return rows;
}

std::unique_ptr<IPluginContactModelWrapper> bindContactModel(SLoadedLibrary loaded, const QString& name,
                                                             quint32 modelType)
{
    const VersionRow* const row = versionRow(contactVersions(), loaded.version);
    if (row == nullptr) {
        reportUnsupportedVersion(loaded.version, name,
                                 QString("The contact model interface version is not supported,\nthe contact "
                                         "model must use interface version %1")
                                     .arg(versionText(contactVersions().back().version)));
        return nullptr;
    }
    std::unique_ptr<IPluginContactModelWrapper> wrapper = row->make(modelType);
    return wrapper->setupPlugin(std::move(loaded.library), name.toStdString()) ? std::move(wrapper) : nullptr;
}

std::unique_ptr<IPluginContactModelWrapper> bindContactModel(const QString& name, quint32 modelType)
{
    SLoadedLibrary loaded = loadPluginLibrary(contactModelPlugins, name);
    return loaded.library != nullptr ? bindContactModel(std::move(loaded), name, modelType) : nullptr;
}

} // namespace NBrenmark::NApiCm
