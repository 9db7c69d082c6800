// The order of the upgrades: each relies on those before it.
#include "legacy/creator_upgrades.h"

#include "core/version_history.h"
#include "legacy/pair_table_rekeying.h"
#include "legacy/shared_materials.h"
#include "legacy/size_distributions_of_factories.h"
#include "model/creator_data.h"

#include <functional>
#include <map>

namespace NBrenmark::NLegacySupport {

static std::map<QString, QString> materialsOfTypes(const CCreatorData& creator)
{
    std::map<QString, QString> materials;
    for (const auto& type : creator.particleTypes.types)
        materials[type->displayName] = type->materialName;
    return materials;
}

void upgradeCreatorData(CCreatorData& creator, quint32 fileVersion, IUpgradeListener* listener)
{
    if (listener != nullptr)
        listener->upgrading(creator);
    const std::map<QString, QString> before = materialsOfTypes(creator);
    // What belongs to materials comes first: pair tables and size laws go by the materials as they are then.
    splitSharedMaterials(creator);
    checkFactoryMaterials(creator);
    if (fileVersion < NFileVersion::materialKinds)
        applyMaterialRule(creator, std::not_fn(storesPairsOfTypes));
    rekeyPairTables(creator, creator.physicsModels.sphereSphereModels, false);
    rekeyPairTables(creator, creator.physicsModels.sphereGeometryModels, true);
    buildSizeDistributions(creator);
    for (const auto& [type, material] : materialsOfTypes(creator)) {
        const auto stored = before.find(type);
        if (stored == before.end())
            creator.materialsBefore[type] = QString();
        else if (stored->second != material)
            creator.materialsBefore[type] = stored->second;
    }
    if (listener != nullptr)
        listener->upgraded(creator);
}

} // namespace NBrenmark::NLegacySupport
