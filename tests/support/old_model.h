#pragma once
// A model as a legacy creator block leaves it before its upgrades, built by hand: materials, particle types, geometry
// and the factories in it.

#include "core/log.h"
#include "model/creator_data.h"
#include "model/factories/factory_size.h"
#include "model/factories/factory_type.h"
#include "model/factories/particle_factory.h"
#include "model/factories/particle_factory_list.h"
#include "model/geometry/geometry_group.h"
#include "physics/name_tables.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace NBrenmark {

struct SOldModel
{
    /// The materials "m" and "n" that touch themselves and each other, and no physics; of a deck of which nothing was said.
    SOldModel()
    {
        clearLogOnceMemory();
        creator.physicsModels.clear();
        for (const char* material : {"m", "n"})
            creator.materials.set(material, new CMaterial(material, 0.25, 1e8, 2500, 0, eBulkMaterial));
        for (const auto& [a, b] : {std::pair("m", "m"), std::pair("m", "n")}) {
            auto* const interaction = new CInteraction;
            interaction->restitution = 0.875;
            creator.interactions.set(a, b, interaction);
        }
    }

    CParticleType& addType(const char* name, const char* material)
    {
        CParticleType& type = creator.particleTypes.append();
        type.setName(name);
        type.materialName = material;
        return type;
    }
    CGeometryGroup& addGroup(const char* name, const char* material)
    {
        auto* const group = new CGeometryGroup(nullptr);
        group->setName(name);
        group->materialName = material;
        creator.geometryGroups.add(group, false);
        return *group;
    }
    /// A factory that gives each of its types the size of its number; 0 for a type without a size.
    CParticleFactory& addFactory(CGeometryGroup& group, const char* name,
                                 const std::vector<std::pair<const char*, double>>& types)
    {
        CParticleFactory& factory = group.factories->add(createFactory("dynamic", name));
        factory.setTypeKind(types.size() == 1 ? "fixed" : "binary", nullptr);
        std::vector<QString> names;
        for (const auto& [type, size] : types) {
            names.push_back(type);
            if (size == 0.0)
                continue;
            auto law = std::make_unique<CFixedFactorySize>();
            law->sizeDistribution.value = size;
            factory.setSize(type, std::move(law));
        }
        factory.type->setTypeNames(names);
        return factory;
    }
    template <class TModel>
    auto& addModel(quint32 modelType = eSphereSphereModel)
    {
        auto model = std::make_unique<TModel>(modelType);
        auto& added = *model;
        creator.physicsModels.addContactModel(std::move(model), CPhysicsModels::atEnd);
        return added.parameters;
    }

    /// "A:m B:m(1)", in the order of the types.
    std::string types() const
    {
        std::string text;
        for (const auto& type : creator.particleTypes.types)
            text += (text.empty() ? "" : " ") + type->name + ":" + type->materialName.toStdString();
        return text;
    }
    QString materialOf(const char* type) const { return creator.particleTypes.find(type)->materialName; }

    CCreatorData creator{SPropertyManagers()};
};

/// "m/n=4 n/n=5 "
inline std::string textOf(const CPairTable<double>& table)
{
    std::string text;
    for (const auto& [pair, value] : table.entries)
        text += pair.first + "/" + pair.second + "=" + QString::number(value).toStdString() + " ";
    return text;
}

} // namespace NBrenmark
