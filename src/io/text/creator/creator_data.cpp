// The text of a creator model's root.
#include "model/creator_data.h"
#include "io/text/text_writer.h"

namespace NBrenmark {

void CTextWriter::writeCreatorData(CCreatorData& creator)
{
    writeFileVersionInfo(creator);
    // Of a segment in the legacy family, of a timestep's file in HDF5.
    out.stored("storageIndex", creator.storageIndex());
    out.stored("storageOffset", creator.storageOffset()); // byte in that segment; legacy family only
    out.stored("legacyStreamFlag", creator.legacyStreamFlag);

    out.value("title", creator.title);
    out.value("description", creator.description);
    out.value("damping", creator.damping);                                     // factor
    out.value("gravity", creator.gravity);                                     // m/s^2
    out.value("velocityRestricted", creator.velocityRestricted);               // not 0: limited
    out.value("velocityLimit", creator.velocityLimit);                         // m/s
    out.value("angularVelocityRestricted", creator.angularVelocityRestricted); // not 0: limited
    out.value("angularVelocityLimit", creator.angularVelocityLimit);           // rad/s
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
    out.stored("buildRevision", data.buildRevision); // of the program that wrote it, not of this one
    out.stored("buildBranch", data.buildBranch);
}

} // namespace NBrenmark
