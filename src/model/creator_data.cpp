#include "model/creator_data.h"

#include "visitors/file_visitor_reader.h"
#include "visitors/file_visitor_writer.h"

namespace NBrenmark {

CCreatorData::CCreatorData(const SPropertyManagers& managers)
    : particleTypes(managers.particle), geometryGroups(managers), physicsModels(this)
{
    particleTypes.domain = &domain;
}

void CCreatorData::read(IFileVisitorReader& v) { v.readCreatorData(*this); }

void CCreatorData::write(IFileVisitorWriter& v) { v.writeCreatorData(*this); }

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

CGeometryGroup* CCreatorData::geometryGroupByName(const QString& name) const
{
    return geometryGroups.at(geometryGroups.indexOf(name));
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
