// The order of the upgrades: each relies on those before it.
#include "legacy/creator_upgrades.h"

#include "core/version_history.h"
#include "legacy/pair_table_rekeying.h"
#include "legacy/shared_materials.h"
#include "legacy/size_distributions_of_factories.h"
#include "model/creator_data.h"

namespace NBrenmark::NLegacySupport {

void upgradeCreatorData(CCreatorData& creator, quint32 fileVersion)
{
    // What belongs to materials comes first: pair tables and size laws go by the materials as they are then.
    splitSharedMaterials(creator);
    checkFactoryMaterials(creator);
    if (fileVersion < NFileVersion::materialKinds)
        applyMaterialRule(creator);
    rekeyPairTables(creator, creator.physicsModels.sphereSphereModels, false);
    rekeyPairTables(creator, creator.physicsModels.sphereGeometryModels, true);
    buildSizeDistributions(creator);
}

} // namespace NBrenmark::NLegacySupport
