// The rule by which decks from before 30.0.4 get the two kinds of material.
#include "core/counted.h"
#include "core/log.h"
#include "core/shortened.h"
#include "model/creator_data.h"
#include "model/factories/particle_factory_list.h"
#include "model/geometry/geometry_group.h"
#include "model/split_material.h"

#include <QHash>
#include <QSet>

namespace NBrenmark {

using CGroupsByMaterial = QHash<QString, std::vector<CGeometryGroup*>>;

static CGroupsByMaterial groupsByMaterial(const GeometryGroups& geometry)
{
    CGroupsByMaterial groups;
    for (CGeometryGroup* group : geometry.groups())
        if (group != nullptr)
            groups[group->materialName].push_back(group);
    return groups;
}

static QSet<QString> materialsOfTypes(const CParticleTypes& types)
{
    QSet<QString> materials;
    for (const auto& type : types.types)
        materials.insert(type->materialName);
    return materials;
}

static void becomeEquipment(CMaterial& material, const QString& name)
{
    material.type = eEquipmentMaterial;
    reportOnce(eUpgraded, NLogTitle::conversion,
               "Material \"" + shortened(name) + "\" is used by no particle type: it becomes an equipment material.", 1,
               shortened(name));
}

void applyMaterialRule(CCreatorData& creator, const HasPairsOfThese& namesMaterials)
{
    const CGroupsByMaterial groups = groupsByMaterial(creator.geometryGroups);
    const QSet<QString> used = materialsOfTypes(creator.particleTypes);
    const QStringList names = creator.materials.keys(); // copies made below are no bulk materials
    for (const QString& name : names) {
        CMaterial& material = *creator.materials.find(name);
        if (!material.isBulk())
            continue;
        if (!used.contains(name)) {
            becomeEquipment(material, name);
            continue;
        }
        const std::vector<CGeometryGroup*> users = groups.value(name);
        if (users.empty())
            continue;
        const QString copy = splitMaterial(creator, name, true, namesMaterials);
        for (CGeometryGroup* group : users)
            group->materialName = copy;
        reportOnce(eUpgraded, NLogTitle::conversion,
                   "Material \"" + shortened(name) + "\" is used by particles and by " +
                       counted(static_cast<qint64>(users.size()), "geometry group") + ", which get" +
                       (users.size() == 1 ? "s" : "") + " the equipment material \"" + shortened(copy) + "\".",
                   1, shortened(name));
    }
}

} // namespace NBrenmark
