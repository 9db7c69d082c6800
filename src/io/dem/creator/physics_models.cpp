// The chains of contact models and the external forces.
#include "physics/physics_models.h"

#include "core/log.h"
#include "core/shortened.h"
#include "io/dem/dem_reader.h"
#include "io/dem/dem_writer.h"
#include "physics/phantoms.h"

namespace NBrenmark {

static constexpr qint64 leastModelBytes = 4; // its name
/// The source of a model where the version doesn't store it: look among all.
static constexpr quint32 anySource = 2;

/// Name and source come before the parameters of every contact model and force.
struct SModelHead
{
    QString name;
    quint32 source = anySource;
};

static SModelHead readModelHead(CInForm& f)
{
    SModelHead head;
    f.text(head.name);
    f.i32(head.source, gateModelSource, anySource); // EModelSource
    head.name = repairedModelName(head.name);
    return head;
}

/// No parameters are stored of what comes from a plug-in: a phantom leaves nothing behind.
template <class TPhantom, class TModel>
static void reportPhantom(const char* noun, const TModel& model)
{
    if (dynamic_cast<const TPhantom*>(&model) != nullptr)
        reportOnce(eRemark, NLogTitle::legacyRead,
                   std::string(noun) + " \"" + shortened(model.modelName()) +
                       "\" isn't known here; its name and its place are kept.",
                   1, shortened(model.modelName()));
}

static void readChain(CDemCreatorDataReader& reader, CInForm& f, CPhysicsModels& models, quint32 modelType)
{
    const quint32 count = f.count("contact model", leastModelBytes);
    for (quint32 i = 0; i < count; ++i) {
        const SModelHead head = readModelHead(f);
        std::unique_ptr<IContactModel> model = models.makeContactModel(head.name, modelType, head.source, true);
        reportPhantom<CContactModelPhantom>("contact model", *model);
        model->read(reader);
        models.addContactModel(std::move(model), CPhysicsModels::atEnd); // refused, it is reported and left out
    }
}

void CDemCreatorDataReader::readPhysicsModels(CPhysicsModels& models)
{
    CInForm f = in();
    if (!f.stores(gateForces)) // such decks say nothing of their physics
        return;
    const CPhysicsModels::CLoading loading(models);
    models.clear();
    if (f.stores(gateContactModels)) {
        readChain(*this, f, models, eSphereSphereModel);
        readChain(*this, f, models, eSphereGeometryModel);
    }
    const quint32 count = f.count("external force", leastModelBytes);
    for (quint32 i = 0; i < count; ++i) {
        const SModelHead head = readModelHead(f);
        std::unique_ptr<IExternalForce> force = models.makeExternalForce(head.name, head.source, true);
        if (force == nullptr) // the word for no force
            continue;
        reportPhantom<CExternalForcePhantom>("external force", *force);
        force->read(*this);
        models.addExternalForce(std::move(force), CPhysicsModels::atEnd);
    }
}

void CDemCreatorDataWriter::writePhysicsModels(const CPhysicsModels& models)
{
    COutForm f = out();
    const auto writeList = [&](const char* noun, const auto& list) {
        f.length(noun, leastModelBytes, list);
        for (const auto& model : list) {
            f.text(model->modelName());
            f.i32(model->source); // EModelSource
            model->write(*this);
        }
    };
    writeList("contact model", models.sphereSphereModels);
    writeList("contact model", models.sphereGeometryModels);
    writeList("external force", models.externalForces);
}

} // namespace NBrenmark
