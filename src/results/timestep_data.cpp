#include "results/timestep_data.h"

#include "model/creator_data.h"
#include "visitors/file_visitor_reader.h"
#include "visitors/file_visitor_writer.h"

namespace NBrenmark {

CTimestepData::CTimestepData(const SPropertyManagers& managers, CCreatorData& creator)
    : particleTypes(managers.particle),
      contacts(managers.contact),
      creatorData(creator),
      simulationProperties(managers.simulation)
{
    particleTypes.domain = &creator.domain;
    simulationProperties.resize(1);
}

void CTimestepData::read(IFileVisitorReader& v) { v.readTimestepData(*this); }

void CTimestepData::write(IFileVisitorWriter& v) { v.writeTimestepData(*this); }

void CTimestepData::clear()
{
    systemEnergy.reset();
    removedParticles.clear();
    particleTypes.clear();
    contacts.clear();
    bonds.clear();
    collisions.clear();
}

} // namespace NBrenmark
