// The table of interface versions of external forces.
#include "physics/plugins/external_forces.h"

#include "core/version.h"
#include "physics/plugins/external_force_v1_1_0.h"
#include "physics/plugins/external_force_v2_0_0.h"
#include "physics/plugins/external_force_v2_1_0.h"
#include "physics/plugins/external_force_v2_2_0.h"
#include "physics/plugins/external_force_v2_4_0.h"

namespace NBrenmark::NApiPbf {

using ForceVersionRow = SPluginVersion<IPluginExternalForceWrapper>;

template <class TWrapper>
static ForceVersionRow forceVersion(quint32 major, quint32 minor)
{
    return {makeVersion(major, minor, 0),
            []() -> std::unique_ptr<IPluginExternalForceWrapper> { return std::make_unique<TWrapper>(); }};
}

static const std::vector<ForceVersionRow>& forceVersions()
{
    static const std::vector<ForceVersionRow> rows = {
        forceVersion<CPluginExternalForceWrapper_V1_0_0>(1, 0), forceVersion<CPluginExternalForceWrapper_V1_1_0>(1, 1),
        forceVersion<CPluginExternalForceWrapper_V2_0_0>(2, 0), forceVersion<CPluginExternalForceWrapper_V2_1_0>(2, 1),
        forceVersion<CPluginExternalForceWrapper_V2_2_0>(2, 2), forceVersion<CPluginExternalForceWrapper_V2_3_0>(2, 3),
        forceVersion<CPluginExternalForceWrapper_V2_4_0>(2, 4),
    };
    return rows;
}

std::unique_ptr<IPluginExternalForceWrapper> bindExternalForce(SLoadedLibrary loaded, const QString& name)
{
    const ForceVersionRow* const row = versionRow(forceVersions(), loaded.version);
    if (row == nullptr) {
        reportUnsupportedVersion(loaded.version, name, QString());
        return nullptr;
    }
    std::unique_ptr<IPluginExternalForceWrapper> wrapper = row->make();
    return wrapper->setupPlugin(std::move(loaded.library), name.toStdString()) ? std::move(wrapper) : nullptr;
}

std::unique_ptr<IPluginExternalForceWrapper> bindExternalForce(const QString& name)
{
    SLoadedLibrary loaded = loadPluginLibrary(externalForcePlugins, name);
    return loaded.library != nullptr ? bindExternalForce(std::move(loaded), name) : nullptr;
}

} // namespace NBrenmark::NApiPbf
