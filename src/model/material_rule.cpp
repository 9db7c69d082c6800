// The rule by which decks from before 30.0.4 get the two kinds of material.
#include "core/log.h"
#include "model/creator_data.h"

namespace NBrenmark {

// A material that both particles and geometry use would be split here, each geometry group moved to an equipment copy
// (MaterialMap::splitMaterial). GeometryGroups holds no group that could use one, so a material used is bulk alone.
void applyMaterialRule(CCreatorData& creator)
{
    for (auto entry = creator.materials.begin(); entry != creator.materials.end(); ++entry) {
        CMaterial& material = *entry.value();
        if (!material.isBulk() || !creator.particleTypes.typesOfMaterial(entry.key()).empty())
            continue;
        material.type = eEquipmentMaterial;
        logMessage(eWarning, "Conversion",
                   "Material \"" + entry.key().toStdString() +
                       "\" is used by no particle type: it becomes an equipment material.");
    }
}

} // namespace NBrenmark
