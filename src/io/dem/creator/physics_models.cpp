// The chains of contact models and the external forces.
#include "physics/physics_models.h"

#include "io/dem/dem_reader.h"
#include "io/dem/dem_writer.h"

namespace NBrenmark {

static constexpr qint64 leastModelBytes = 4;
/// The source of a model where the version doesn't store it: look among all.
static constexpr quint32 anySource = 2;

/// Name and source stand before the parameters of every contact model and force.
struct SModelHead
{
    QString name;
    quint32 source = anySource;
};

static SModelHead readModelHead(CInForm& f)
{
    SModelHead head;
    f.text(head.name);
    f.i32(head.source, gateModelSource, anySource);
    return head;
}

void CDemCreatorDataReader::readPhysicsModels(CPhysicsModels& models)
{
    CInForm f = in();
    if (!f.stores(gateForces))
        return;
    models.clear();
    const auto readChain = [&](CPhysicsModels::Chain& chain, quint32 modelType) {
        const quint32 count = f.count("contact model", leastModelBytes);
        for (quint32 i = 0; i < count; ++i) {
            const SModelHead head = readModelHead(f);
            std::unique_ptr<IContactModel> model = createContactModel(head.name, modelType, head.source);
            if (!model) // nobody knows how long its parameters are
                throw not_carried_error("the contact model \"" + head.name.toStdString() + '"');
            model->read(*this);
            chain.push_back(std::move(model));
        }
    };
    if (f.stores(gateContactModels)) {
        readChain(models.sphereSphereModels, eSphereSphereModel);
        readChain(models.sphereGeometryModels, eSphereGeometryModel);
    }
    if (f.count("external force", leastModelBytes) > 0)
        throw not_carried_error("the external force \"" + readModelHead(f).name.toStdString() + '"');
}

void CDemCreatorDataWriter::writePhysicsModels(const CPhysicsModels& models)
{
    COutForm f = out();
    const auto writeChain = [&](const CPhysicsModels::Chain& chain) {
        f.length("contact model", leastModelBytes, chain);
        for (const auto& model : chain) {
            f.text(model->modelName());
            f.i32(model->source);
            model->write(*this);
        }
    };
    writeChain(models.sphereSphereModels);
    writeChain(models.sphereGeometryModels);
    f.i32(models.externalForceCount());
}

} // namespace NBrenmark
