#include "physics/physics_models.h"
#include "io/text/text_writer.h"
#include "physics/hertz_mindlin_no_slip.h"
#include "physics/plugins/plugin_factory_list.h"

namespace NBrenmark {

void CTextWriter::writePhysicsModels(const CPhysicsModels& physics)
{
    const auto chain = [this](const char* name, const CPhysicsModels::Chain& models) {
        out.group(name, [&] {
            CListSegments segments;
            qint32 index = 0;
            for (const auto& model : models) {
                out.group(segments.next(model->modelName()), [&] {
                    out.value("index", index++);
                    out.value("modelType", model->modelType);
                    out.value("source", model->source);
                    model->write(*this);
                });
            }
        });
    };
    chain("sphereSphereModels", physics.sphereSphereModels);
    chain("sphereGeometryModels", physics.sphereGeometryModels);
    out.value("externalForceCount", physics.externalForceCount());
}

void CTextWriter::writeHertzMindlinNoSlipParamData(const CHertzMindlinNoSlipContactModelParamData& parameters)
{
    out.value("enableRollingFriction", parameters.enableRollingFriction);
}

void CTextWriter::writePluginParticleFactoryList(const CPluginParticleFactoryList& factories)
{
    out.value("count", factories.count());
}

} // namespace NBrenmark
