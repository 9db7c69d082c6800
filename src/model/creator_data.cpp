// Ties the parts of a model to one another when it is made, and empties it without undoing that.
#include "model/creator_data.h"

#include "core/log.h"
#include "core/shortened.h"
#include "model/factories/factory_type.h"
#include "model/factories/particle_factory.h"
#include "model/factories/particle_factory_list.h"
#include "model/geometry/geometry_group.h"
#include "visitors/file_visitor_reader.h"
#include "visitors/file_visitor_writer.h"

#include <QSet>

namespace NBrenmark {

CCreatorData::CCreatorData(const SPropertyManagers& managers)
    : particleTypes(managers.particle), geometryGroups(managers), physicsModels(this)
{
    particleTypes.domain = &domain;
}

void CCreatorData::read(IFileVisitorReader& v)
{
    v.readCreatorData(*this);
    modified = false;
    geometryGroups.keepState();
}

void CCreatorData::write(IFileVisitorWriter& v)
{
    const COwnGeometryState own(geometryGroups);
    v.writeCreatorData(*this);
    modified = false;
}

void CCreatorData::clear()
{
    modified = true;
    description.clear();
    materials.clear();
    interactions.clear();
    sizeDistributions.clear();
    pluginFactories.clear();
    geometryGroups.clear();
    legacyStreamFlag = false;
    upgradesPending = false;
    geometryReplaced = false;
    materialsBefore.clear();
    particleTypes.clear();
    velocityRestricted = 0;
    angularVelocityRestricted = 0;
    velocityLimit = 0.0;
    angularVelocityLimit = 0.0;
    physicsModels.clear();
    setStorageIndex(noStorageIndex);
    setStorageOffset(noStorageOffset);
    materialBlocks.clear();
}

std::vector<std::string> CCreatorData::materialNames() const
{
    std::vector<std::string> names;
    for (const CMaterial* material : materials)
        names.push_back(material->name);
    return names;
}

CGeometryGroup* CCreatorData::geometryGroupByName(const QString& name) const
{
    return geometryGroups.at(geometryGroups.indexOf(name));
}

void CCreatorData::settle(const SLogTitle& title)
{
    QSet<QString> known;
    for (const std::unique_ptr<CParticleType>& type : particleTypes.types)
        known.insert(type->displayName);
    for (const CGeometryGroup* group : geometryGroups.groups()) {
        if (group == nullptr)
            continue;
        for (const std::unique_ptr<CParticleFactory>& factory : group->factories->factories) {
            if (factory->type == nullptr)
                continue;
            factory->type->attachParticleTypes(&particleTypes);
            for (const QString& typeName : factory->type->typeNames())
                if (!known.contains(typeName))
                    reportOnce(eRemark, title,
                               "The particle factory \"" + shortened(factory->name) +
                                   "\" creates particles of the type \"" + shortened(typeName) +
                                   "\", which isn't there.",
                               1, shortened(factory->name));
        }
    }
}

void CCreatorData::changeTitle(const QString& text)
{
    title = text;
    modified = true;
}

void CCreatorData::setStorageIndex(quint32 value)
{
    previousIndex = index;
    index = value;
}

void CCreatorData::setStorageOffset(quint64 value)
{
    previousOffset = offset;
    offset = value;
}

} // namespace NBrenmark
