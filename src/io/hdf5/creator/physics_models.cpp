// The chains of contact models and the external forces: a group for each chain, in it a group for each
// model with its parameters, and the order of their names.

#include "io/hdf5/hdf5_reader.h"
#include "io/hdf5/hdf5_writer.h"

#include "physics/hertz_mindlin_no_slip.h"
#include "physics/physics_models.h"

namespace NBrenmark {

// ---------------------------------------------------------------- parameters

template <class TForm, class TData>
static void rollingFrictionForm(TForm& f, TData& data)
{
    if (data.hasRollingFrictionOption() && f.since(30, 0, 20))
        f.attribute("enable rolling friction", data.enableRollingFriction);
}

void CHdf5CreatorDataReader::readHertzMindlinNoSlipParamData(CHertzMindlinNoSlipContactModelParamData& data)
{
    rollingFrictionForm(in(), data);
}

void CHdf5CreatorDataWriter::writeHertzMindlinNoSlipParamData(const CHertzMindlinNoSlipContactModelParamData& data)
{
    rollingFrictionForm(out(), data);
}

// ---------------------------------------------------------------- chains

static const char* const orderName = "order";
static const char* const sourceName = "model source";

static void readChain(CHdf5CreatorDataReader& reader, CHdf5FormReader& in, CPhysicsModels::Chain& chain,
                      quint32 modelType)
{
    QStringList order;
    readDataset(orderName, order, *reader.location);
    for (const QString& storedName : order) {
        in.group(storedName.toStdString(), [&] {
            qint32 source = 0;
            in.attribute(sourceName, source);
            // Early decks spelled the default model in lower case.
            const QString name =
                storedName == "hertz-mindlin (no slip)" ? CHertzMindlinNoSlipContactModel::registeredName : storedName;
            std::unique_ptr<IContactModel> model = createContactModel(name, modelType, static_cast<quint32>(source));
            if (!model)
                throw not_carried_error("contact models \"" + name.toStdString() + "\"");
            model->read(reader);
            chain.push_back(std::move(model));
        });
    }
}

static void writeChain(CHdf5CreatorDataWriter& writer, CHdf5FormWriter& out, const CPhysicsModels::Chain& chain)
{
    QStringList order;
    for (const std::unique_ptr<IContactModel>& model : chain) {
        order.append(model->modelName());
        out.group(model->modelName().toStdString(), [&] {
            out.attribute(sourceName, static_cast<qint32>(model->source));
            model->write(writer);
        });
    }
    writeDataset(orderName, order, *writer.location);
}

void CHdf5CreatorDataReader::readPhysicsModels(CPhysicsModels& models)
{
    models.clear();
    in().group("PhysicsModels/", [&] {
        in().group("SurfaceSurface/", [&] { readChain(*this, in(), models.sphereSphereModels, eSphereSphereModel); });
        in().group("SurfaceGeometry/",
                   [&] { readChain(*this, in(), models.sphereGeometryModels, eSphereGeometryModel); });
        in().group("ExternalForces/", [&] {
            QStringList order;
            readDataset(orderName, order, *location);
            if (!order.isEmpty())
                throw not_carried_error("external forces \"" + order.first().toStdString() + "\"");
        });
    });
}

void CHdf5CreatorDataWriter::writePhysicsModels(const CPhysicsModels& models)
{
    out().group("PhysicsModels/", [&] {
        out().group("SurfaceSurface/", [&] { writeChain(*this, out(), models.sphereSphereModels); });
        out().group("SurfaceGeometry/", [&] { writeChain(*this, out(), models.sphereGeometryModels); });
        out().group("ExternalForces/", [&] { writeDataset(orderName, QStringList(), *location); });
    });
}

} // namespace NBrenmark
