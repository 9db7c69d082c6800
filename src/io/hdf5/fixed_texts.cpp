#include "io/hdf5/fixed_texts.h"

#include "io/hdf5/shapes.h"
#include "model/creator_data.h"
#include "results/timestep_data.h"

namespace NBrenmark {

using namespace HDF5DATATYPES;

static void checkSphereNames(const CParticleTypes& types)
{
    for (const std::unique_ptr<CParticleType>& type : types.types)
        recordsOf<SSphereType>(type->spheres);
}

void checkFixedTexts(const CCreatorData& creator)
{
    checkAttributeText("title", creator.title.toStdString());
    checkAttributeText("description", creator.description.toStdString());
    recordsOf<SMaterialType>(materialRows(creator.materials));
    recordsOf<SInteractionType>(interactionRows(creator.interactions));
    checkSphereNames(creator.particleTypes);
    checkFixedTexts(creator.physicsModels);
}

void checkFixedTexts(const CTimestepData& timestep)
{
    checkSphereNames(timestep.particleTypes);
    for (const QString& name : timestep.removedParticles.keys())
        recordsOf<SNameCountType>({{name, 0}});
}

} // namespace NBrenmark
