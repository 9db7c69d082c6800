// A split copies what a material has with all others: memory is counted, for a small file can ask for many.
#include "model/split_material.h"

#include "core/memory_ceiling.h"
#include "model/creator_data.h"

namespace NBrenmark {

QString splitMaterial(CCreatorData& creator, const QString& original, bool equipmentCopy,
                      const HasPairsOfThese& namesMaterials)
{
    constexpr quint64 bytesOfMaterial = 256; // and about as many of each interaction, with their keys
    const auto partners = static_cast<quint64>(creator.interactions.partnersOf(original).size());
    admitMemory((partners + 1) * bytesOfMaterial, "new materials with their interactions");
    QString copy = creator.materials.splitMaterial(original, equipmentCopy, creator.interactions);
    if (!copy.isEmpty())
        copyEntries(creator.physicsModels, original, copy, namesMaterials);
    return copy;
}

} // namespace NBrenmark
