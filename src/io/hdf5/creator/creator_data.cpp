// The creator model: a child of "/CreatorData/" by its number.

#include "io/hdf5/hdf5_reader.h"
#include "io/hdf5/hdf5_writer.h"

#include "core/log.h"
#include "model/creator_data.h"

namespace NBrenmark {

static constexpr qint32 spaceDimensions = 3;

template <class TForm, class TData>
static void scalarsForm(TForm& f, TData& data, qint32& dimensions)
{
    f.attribute("title", data.title);
    f.attribute("description", data.description);
    f.attribute("dimensions", dimensions);                          // always 3; of no use
    f.attribute("damping", data.damping);                           // factor
    f.attribute("vel restrict", data.velocityRestricted);           // not 0: limited
    f.attribute("vel limit", data.velocityLimit);                   // m/s
    f.attribute("angvel restrict", data.angularVelocityRestricted); // not 0: limited
    f.attribute("angvel limit", data.angularVelocityLimit);         // rad/s
    f.attribute("gravity", data.gravity);                           // m/s^2
}

/// Runs visit on each part of a creator model, in file order.
template <class TData, class TVisit>
static void forEachPart(TData& data, TVisit&& visit)
{
    visit(data.materials);
    visit(data.interactions);
    visit(data.domain);
    visit(data.cylindricalPeriodicBoundaryConditions);
    visit(data.physicsModels);
    visit(data.particleTypes);
    visit(data.geometryGroups);
    visit(data.sizeDistributions);
    visit(data.materialBlocks);
    visit(data.pluginFactories);
}

void CHdf5CreatorDataReader::readCreatorData(CCreatorData& data)
{
    H5::Group root = file.openGroup("/");
    const CHdf5Place place(*this, root);
    in().group("CreatorData/", [&] {
        in().group(std::to_string(data.storageIndex()), [&] {
            readFileVersionInfo(data); // first: every gate goes by it
            qint32 dimensions = 0;
            scalarsForm(in(), data, dimensions);
            if (options.examine && dimensions != spaceDimensions)
                report(eRepaired, NLogTitle::hdf5Read,
                       "The attribute \"dimensions\" holds " + std::to_string(dimensions) + ", which is read as 3.");
            forEachPart(data, [this](auto& part) { in().examined("", [&] { part.read(*this); }); });
        });
    });
    data.settle(NLogTitle::hdf5Read);
    if (!in().since(30, 0, 4)) // before, a material had no type
        applyMaterialRule(data, [](const IContactModel&) { return true; });
}

void CHdf5CreatorDataWriter::writeCreatorData(CCreatorData& data)
{
    out().root([&] {
        out().sameGroup("CreatorData/", [&] {
            out().group(std::to_string(data.storageIndex()), [&] {
                writeFileVersionInfo(data);
                qint32 dimensions = spaceDimensions;
                scalarsForm(out(), data, dimensions);
                forEachPart(data, [this](const auto& part) { part.write(*this); });
            });
        });
    });
}

} // namespace NBrenmark
