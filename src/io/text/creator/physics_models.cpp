// The text of the chains of models, in order: the order is part of the physics.
#include "physics/physics_models.h"
#include "io/text/text_writer.h"

namespace NBrenmark {

void CTextWriter::writePhysicsModels(const CPhysicsModels& physics)
{
    const auto list = [this](const char* name, const auto& models, const auto& describe) {
        out.group(name, [&] {
            CListSegments segments;
            qint32 index = 0;
            for (const auto& model : models) {
                out.group(segments.next(model->modelName()), [&] {
                    out.value("index", index++);
                    describe(*model);
                    out.value("source", model->source); // EModelSource
                    model->write(*this);
                });
            }
        });
    };
    const auto modelType = [this](const IContactModel& model) { out.value("modelType", model.modelType); };
    list("sphereSphereModels", physics.sphereSphereModels, modelType);
    list("sphereGeometryModels", physics.sphereGeometryModels, modelType);
    list("externalForces", physics.externalForces, [](const IExternalForce&) {});
}

} // namespace NBrenmark
