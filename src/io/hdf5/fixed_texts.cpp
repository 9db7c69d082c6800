#include "io/hdf5/fixed_texts.h"

#include "io/hdf5/shapes.h"
#include "model/creator_data.h"
#include "results/timestep_data.h"

namespace NBrenmark {

static void checkSphereNames(const CParticleTypes& types)
{
    HDF5DATATYPES::SSphereType::SRecord record;
    for (const std::unique_ptr<CParticleType>& type : types.types)
        for (const CSphere& sphere : type->spheres)
            setText(record.name, sphere.name);
}

void checkFixedTexts(const CCreatorData& creator)
{
    checkAttributeText("title", creator.title.toStdString());
    checkAttributeText("description", creator.description.toStdString());
    materialRecords(creator.materials);
    interactionRecords(creator.interactions);
    checkSphereNames(creator.particleTypes);
    checkFixedTexts(creator.physicsModels);
}

void checkFixedTexts(const CTimestepData& timestep)
{
    checkSphereNames(timestep.particleTypes);
    HDF5DATATYPES::SNameCountType::SRecord record;
    for (const QString& name : timestep.removedParticles.keys())
        setText(record.name, name);
}

} // namespace NBrenmark
