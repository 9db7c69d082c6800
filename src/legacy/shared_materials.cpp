// Why: current sizes and shares of a mix go by material, so that a factory of one type that shares its material
// would feed the others too. Old factories say of each type by itself how much of it there is.
#include "legacy/shared_materials.h"

#include "core/log.h"
#include "core/shortened.h"
#include "legacy/deck_factories.h"
#include "legacy/pair_table_rekeying.h"
#include "model/creator_data.h"
#include "model/factories/particle_factory.h"
#include "model/split_material.h"

#include <QHash>

#include <algorithm>
#include <functional>
#include <set>

namespace NBrenmark::NLegacySupport {

// ---------------------------------------------------------------- splitting

/// The names of the types of each material, in the order of the types.
static QHash<QString, QStringList> typesByMaterial(const CCreatorData& creator)
{
    QHash<QString, QStringList> names;
    for (const auto& type : creator.particleTypes.types)
        names[type->materialName].append(type->displayName);
    return names;
}

static bool feedsOneOf(const SDeckFactory& factory, const QStringList& types)
{
    return std::any_of(types.begin(), types.end(), [&](const QString& type) { return factory.feeds(type); });
}

static std::string quoted(const QString& name) { return "\"" + shortened(name) + "\""; }

static void reportSkipped(const std::vector<SDeckFactory>& factories)
{
    for (const SDeckFactory& factory : factories)
        if (factory.typeNames.empty())
            reportOnce(eRemark, NLogTitle::conversion,
                       "Factory " + quoted(factory.factory->name) +
                           " names no particle type: materials are split without it.",
                       1, shortened(factory.factory->name));
}

/// A second type like one that there is, without its particles.
static CParticleType& appendCopy(CParticleTypes& types, const CParticleType& original)
{
    const QString name = makeUniqueName(original.displayName, types.names());
    CParticleType& copy = types.append();
    copy.copyDefinition(original);
    copy.setName(name);
    return copy;
}

/// Splits one material.
/// \param sharing  the types of it
static void splitMaterialOf(CCreatorData& creator, const QString& material, QStringList sharing,
                            std::vector<SDeckFactory>& factories)
{
    // A factory of several types goes on with the types as they are, and these with their material.
    const bool needTypeCopies = std::any_of(factories.begin(), factories.end(), [&](const SDeckFactory& factory) {
        return factory.typeNames.size() > 1 && feedsOneOf(factory, sharing);
    });
    for (SDeckFactory& factory : factories) {
        if (sharing.size() < 2)
            return;
        if (factory.typeNames.size() != 1 || !feedsOneOf(factory, sharing))
            continue;
        QString& name = factory.typeNames.front();
        const QString made = splitMaterial(creator, material, false, std::not_fn(storesPairsOfTypes));
        CParticleType* type = creator.particleTypes.find(name);
        const std::string why = "Factory " + quoted(factory.factory->name) + " feeds particle type " + quoted(name) +
                                " alone, which shares the material " + quoted(material) + ": ";
        if (needTypeCopies) {
            type = &appendCopy(creator.particleTypes, *type);
            copyEntries(creator.physicsModels, name, type->displayName, storesPairsOfTypes);
            factory.factory->renameType(name, type->displayName);
            reportOnce(eUpgraded, NLogTitle::conversion,
                       why + "it feeds the new type " + quoted(type->displayName) + " of the new material " +
                           quoted(made) + " from now on.",
                       1, shortened(factory.factory->name));
            name = type->displayName;
        }
        else {
            sharing.removeOne(name);
            reportOnce(eUpgraded, NLogTitle::conversion, why + "the type gets the new material " + quoted(made) + ".",
                       1, shortened(factory.factory->name));
        }
        type->materialName = made;
    }
}

void splitSharedMaterials(CCreatorData& creator)
{
    std::vector<SDeckFactory> factories = factoriesOf(creator);
    bool isReported = false;
    const QHash<QString, QStringList> typesOf = typesByMaterial(creator);
    const QStringList materials = creator.materials.keys(); // of those made below nothing is shared
    for (const QString& material : materials) {
        const QStringList sharing = typesOf.value(material);
        if (sharing.size() < 2)
            continue;
        if (!isReported)
            reportSkipped(factories);
        isReported = true;
        splitMaterialOf(creator, material, sharing, factories);
    }
}

// ---------------------------------------------------------------- what can't be split

/// The materials that types of these names have, each once, in the order of the names.
static QStringList materialsOf(const CCreatorData& creator, const std::vector<QString>& typeNames)
{
    QStringList materials;
    for (const QString& name : typeNames) {
        const CParticleType* const type = creator.particleTypes.find(name);
        if (type != nullptr && !materials.contains(type->materialName))
            materials.append(type->materialName);
    }
    return materials;
}

void checkFactoryMaterials(const CCreatorData& creator)
{
    std::set<quint32> reportedGroups;
    for (const SDeckFactory& factory : factoriesOf(creator)) {
        const QStringList materials = materialsOf(creator, factory.typeNames);
        if (materials.size() < 2 || !reportedGroups.insert(factory.group).second)
            continue;
        QStringList types;
        for (const QString& name : factory.typeNames)
            types.append(name);
        const QString text = QStringLiteral("Problem with conversion. Factory %1 uses particle types belonging to "
                                            "different materials. You should delete and recreate this factory.\n"
                                            "Particle Types: %2\nMaterials: %3\n");
        reportOnce(
            eRemark, NLogTitle::conversionProblem,
            text.arg(factory.factory->name, types.join(QStringLiteral(", ")), materials.join(QStringLiteral(", ")))
                .toStdString(),
            1, shortened(factory.factory->name));
    }
}

} // namespace NBrenmark::NLegacySupport
