// Walks the factories group by group, as their order decides which type gets a new material.
#include "legacy/deck_factories.h"

#include "model/creator_data.h"
#include "model/factories/factory_type.h"
#include "model/factories/particle_factory.h"
#include "model/factories/particle_factory_list.h"
#include "model/geometry/geometry_group.h"

#include <algorithm>

namespace NBrenmark::NLegacySupport {

bool SDeckFactory::feeds(const QString& typeName) const
{
    return std::find(typeNames.begin(), typeNames.end(), typeName) != typeNames.end();
}

/// A file may hold a fixed type without its name.
static std::vector<QString> namesOf(const CParticleFactory& factory)
{
    std::vector<QString> names = factory.type != nullptr ? factory.type->typeNames() : std::vector<QString>();
    names.erase(std::remove(names.begin(), names.end(), QString()), names.end());
    return names;
}

std::vector<SDeckFactory> factoriesOf(const CCreatorData& creator)
{
    std::vector<SDeckFactory> found;
    for (const CGeometryGroup* group : creator.geometryGroups.groups()) {
        if (group == nullptr)
            continue;
        for (const auto& factory : group->factories->factories)
            found.push_back({factory.get(), group->index, namesOf(*factory)});
    }
    return found;
}

} // namespace NBrenmark::NLegacySupport
