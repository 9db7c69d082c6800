// The text of a creator model's root.
#include "model/creator_data.h"
#include "io/text/text_writer.h"

namespace NBrenmark {

void CTextWriter::writeCreatorData(CCreatorData& creator)
{
    writeFileVersionInfo(creator);
    out.stored("storageIndex", creator.storageIndex());
    out.stored("storageOffset", creator.storageOffset());
    out.stored("legacyStreamFlag", creator.legacyStreamFlag);

    out.value("title", creator.title);
    out.value("description", creator.description);
    out.value("damping", creator.damping);
    out.value("gravity", creator.gravity);
    out.value("velocityRestricted", creator.velocityRestricted);
    out.value("velocityLimit", creator.velocityLimit);
    out.value("angularVelocityRestricted", creator.angularVelocityRestricted);
    out.value("angularVelocityLimit", creator.angularVelocityLimit);
    out.group("materials", [&] { creator.materials.write(*this); });
    out.group("interactions", [&] { creator.interactions.write(*this); });
    out.group("domain", [&] { creator.domain.write(*this); });
    out.group("cylindricalPeriodicBoundaryConditions",
              [&] { creator.cylindricalPeriodicBoundaryConditions.write(*this); });
    out.group("physicsModels", [&] { creator.physicsModels.write(*this); });
    out.group("particles", [&] { creator.particleTypes.write(*this); });
    out.group("geometryGroups", [&] { creator.geometryGroups.write(*this); });
    out.group("sizeDistributions", [&] { creator.sizeDistributions.write(*this); });
    out.group("materialBlocks", [&] { creator.materialBlocks.write(*this); });
    out.group("pluginFactories", [&] { creator.pluginFactories.write(*this); });
}

void CTextWriter::writeFileVersionInfo(CSimulationData& data)
{
    out.stored("fileVersion", versionText(data.fileVersion));
    out.stored("buildRevision", data.buildRevision);
    out.stored("buildBranch", data.buildBranch);
}

} // namespace NBrenmark
