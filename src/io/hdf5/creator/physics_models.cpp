// The chains of contact models and the external forces: a group for each list, in it a group for each
// model with its parameters, and the order of their names.

#include "io/hdf5/hdf5_reader.h"
#include "io/hdf5/hdf5_writer.h"

#include "core/log.h"
#include "core/shortened.h"
#include "physics/phantoms.h"
#include "physics/physics_models.h"

namespace NBrenmark {

static const char* const orderName = "order";
static const char* const sourceName = "model source";

// ---------------------------------------------------------------- reading

/// A model that isn't known here keeps its name and place. What else its group holds can't be kept.
template <class TPhantom, class TModel>
static void reportPhantom(const H5::Group& group, const char* noun, const TModel& model)
{
    if (dynamic_cast<const TPhantom*>(&model) == nullptr)
        return;
    const bool holdsMore = group.getNumObjs() > 0 || group.getNumAttrs() > 1;
    reportOnce(holdsMore ? eNotCarried : eRemark, NLogTitle::hdf5Read,
               std::string(noun) + " \"" + shortened(model.modelName()) +
                   "\" isn't known here; its name and its place are kept" +
                   (holdsMore ? ", its parameters are lost." : "."),
               1, shortened(model.modelName()));
}

/// A model that is built in is that, whatever a file says of its origin.
static void compareSource(const QString& name, quint32 stored, quint32 own)
{
    if (stored != own)
        report(eRepaired, NLogTitle::hdf5Read,
               "The attribute \"model source\" of " + shortened(name) + " holds " + std::to_string(stored) +
                   ", which is read as " + std::to_string(own) + '.');
}

/// Runs body(name, source) in the group of each model that the order names. One that isn't there ends the read.
template <class TBody>
static void readList(CHdf5CreatorDataReader& reader, CHdf5FormReader& in, const TBody& body)
{
    QStringList order;
    readDataset(orderName, order, *reader.location); // that of the chain
    for (const QString& name : order) {
        in.group(name.toStdString(), [&] {
            qint32 source = 0;
            in.attribute(sourceName, source); // EModelSource
            body(repairedModelName(name), static_cast<quint32>(source));
        });
    }
}

static void readChain(CHdf5CreatorDataReader& reader, CHdf5FormReader& in, CPhysicsModels& models, quint32 modelType)
{
    readList(reader, in, [&](const QString& name, quint32 source) {
        std::unique_ptr<IContactModel> model = models.makeContactModel(name, modelType, source, true);
        reportPhantom<CContactModelPhantom>(*reader.location, "contact model", *model);
        if (reader.options.examine)
            compareSource(name, source, model->source);
        model->read(reader);
        models.addContactModel(std::move(model), CPhysicsModels::atEnd); // refused, it is reported and left out
    });
}

static void readForces(CHdf5CreatorDataReader& reader, CHdf5FormReader& in, CPhysicsModels& models)
{
    readList(reader, in, [&](const QString& name, quint32 source) {
        std::unique_ptr<IExternalForce> force = models.makeExternalForce(name, source, true);
        if (force == nullptr) // the word for no force
            return;
        reportPhantom<CExternalForcePhantom>(*reader.location, "external force", *force);
        if (reader.options.examine)
            compareSource(name, source, force->source);
        force->read(reader);
        models.addExternalForce(std::move(force), CPhysicsModels::atEnd);
    });
}

void CHdf5CreatorDataReader::readPhysicsModels(CPhysicsModels& models)
{
    const CPhysicsModels::CLoading loading(models);
    models.clear();
    in().group("PhysicsModels/", [&] {
        in().group("SurfaceSurface/", [&] { readChain(*this, in(), models, eSphereSphereModel); });
        in().group("SurfaceGeometry/", [&] { readChain(*this, in(), models, eSphereGeometryModel); });
        in().group("ExternalForces/", [&] { readForces(*this, in(), models); });
    });
}

// ---------------------------------------------------------------- writing

/// A group in a group can't bear every name: no slash, and not the name of the list's own order.
static bool canNameGroup(const QString& name)
{
    return !name.isEmpty() && name != "." && name != orderName && !name.contains('/') && !name.contains(QChar(0));
}

template <class TList>
static void writeList(CHdf5CreatorDataWriter& writer, CHdf5FormWriter& out, const char* noun, const TList& list)
{
    QStringList order;
    for (const auto& model : list) {
        const QString name = model->modelName();
        const bool twice = order.contains(name);
        if (twice || !canNameGroup(name)) {
            report(eNotCarried, NLogTitle::hdf5Write,
                   std::string("The ") + noun + " \"" + shortened(name) + "\" is left out: " +
                       (twice ? "its list holds another one of that name." : "no group can have that name."),
                   1, shortened(name));
            continue;
        }
        order.append(name);
        out.group(name.toStdString(), [&] {
            out.attribute(sourceName, static_cast<qint32>(model->source)); // EModelSource
            model->write(writer);
        });
    }
    out.dataset(orderName, order); // a group's children have no order of their own
}

void CHdf5CreatorDataWriter::writePhysicsModels(const CPhysicsModels& models)
{
    out().group("PhysicsModels/", [&] {
        out().group("SurfaceSurface/", [&] { writeList(*this, out(), "contact model", models.sphereSphereModels); });
        out().group("SurfaceGeometry/", [&] { writeList(*this, out(), "contact model", models.sphereGeometryModels); });
        out().group("ExternalForces/", [&] { writeList(*this, out(), "external force", models.externalForces); });
    });
}

} // namespace NBrenmark
