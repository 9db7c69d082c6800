#include "legacy/creator_upgrades.h"

#include "core/version.h"
#include "legacy/pair_table_rekeying.h"
#include "model/creator_data.h"

namespace NBrenmark::NLegacySupport {

void upgradeCreatorData(CCreatorData& creator, quint32 fileVersion)
{
    if (fileVersion < makeVersion(30, 0, 4))
        applyMaterialRule(creator);
    rekeyPairTables(creator, creator.physicsModels.sphereSphereModels, false);
    rekeyPairTables(creator, creator.physicsModels.sphereGeometryModels, true);
}

} // namespace NBrenmark::NLegacySupport
