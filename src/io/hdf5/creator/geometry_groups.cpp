// Geometry groups in a creator model: a group for each by its index, with its mesh, its motions and its
// factories. What the shapes add is in shapes.cpp.

#include "io/hdf5/hdf5_reader.h"
#include "io/hdf5/hdf5_writer.h"

#include "core/deck/application_state.h"
#include "core/log.h"
#include "core/memory_ceiling.h"
#include "core/shortened.h"
#include "io/hdf5/geometry.h"
#include "model/factories/particle_factory_list.h"
#include "model/geometry/cad_geometry.h"
#include "model/geometry/geometry_factory.h"
#include "model/geometry/mesh_bytes.h"
#include "model/geometry_groups.h"

namespace NBrenmark {

// ---------------------------------------------------------------- parts of a group

void CHdf5CreatorDataReader::readBoundingBox(CBoundingBox& box)
{
    std::array<C3DPoint, 2> corners;
    in().fixedRows("bounding box", corners); // m; the lower corner comes first, other than in the legacy family
    box.lower = corners[0];
    box.upper = corners[1];
}

void CHdf5CreatorDataWriter::writeBoundingBox(const CBoundingBox& box)
{
    out().fixedRows("bounding box", std::array<C3DPoint, 2>{box.lower, box.upper}); // m; the lower corner comes first
}

template <class TForm, class TMoment>
static void momentOfInertiaForm(TForm& f, TMoment& moment)
{
    f.fixedRows("moment of inertia", moment.values); // kg m^2
}

void CHdf5CreatorDataReader::readMomentOfInertia(CMomentOfInertia& moment) { momentOfInertiaForm(in(), moment); }
void CHdf5CreatorDataWriter::writeMomentOfInertia(const CMomentOfInertia& moment)
{
    momentOfInertiaForm(out(), moment);
}

template <class TForm, class TElectrostatic>
static void electrostaticForm(TForm& f, TElectrostatic& electrostatic)
{
    f.attribute("es exempt", electrostatic.exempt);            // takes no part in charging
    f.attribute("es start charge", electrostatic.startCharge); // C
}

void CHdf5CreatorDataReader::readGeometryGroupElectrostatic(CGeometryGroupElectrostatic& electrostatic)
{
    electrostaticForm(in(), electrostatic);
}

void CHdf5CreatorDataWriter::writeGeometryGroupElectrostatic(const CGeometryGroupElectrostatic& electrostatic)
{
    electrostaticForm(out(), electrostatic);
}

static const char* const blockName = "block name";

void CHdf5CreatorDataReader::readBlockLink(CBlockLink& link) { in().attribute(blockName, link.blockName); }
void CHdf5CreatorDataWriter::writeBlockLink(const CBlockLink& link) { out().attribute(blockName, link.blockName); }

// ---------------------------------------------------------------- one group

/// The mesh as it is for a static group, as it was made for a moving one.
template <class TForm, class TGroup>
static void coordinatesForm(TForm& f, TGroup& g)
{
    using CadGeometry = std::conditional_t<std::is_const_v<TGroup>, const CCADGeometry, CCADGeometry>;
    auto* const imported = dynamic_cast<CadGeometry*>(&g);
    if (imported != nullptr)
        f.plainRows("imported coords", imported->importedCoords); // m, as the import came
    if (!g.isStatic)
        f.plainRows("original coords", g.originalCoords); // m, before it moved
    else if (imported == nullptr)
        f.plainRows("coords", g.coords); // m
}

/// Before 30.0.12 a geometry was real or virtual, and nothing else.
static void readGeometryType(CHdf5FormReader& f, CGeometryGroup& g)
{
    bool isReal = true;
    f.attribute("is real", isReal); // 0 or 1
    g.geometryType = isReal ? eRealGeometry : eVirtualGeometry;
}
static void readGeometryType(CHdf5FormWriter&, const CGeometryGroup&) {} // a writer is of the current version

/// \param enclosed  of an open group nothing is written, whatever was measured
/// \param mask      the stored-fields word
/// \param visit     reads or writes a part by its own form
template <class TForm, class TGroup, class TVisit>
static void groupForm(TForm& f, TGroup& g, QString& name, double& enclosed, quint32& mask, TVisit&& visit)
{
    visit(g.kinematics);
    visit(*g.factories);
    visit(g.bounds);
    visit(g.momentOfInertia);
    f.attribute("name", name);
    f.signedAttribute("unique id", g.uniqueId);   // unique in the deck
    f.attribute("desired force", g.desiredForce); // N
    f.attribute("mask", mask);                    // ETriangleField
    f.attribute("static", g.isStatic);            // never moved so far
    f.plainRows("vertex ids", g.vertexIds);       // unique in the deck, or all are numbered anew
    coordinatesForm(f, g);
    trianglesForm(f, g, mask);
    f.attribute("closed", g.closed); // the mesh encloses a volume
    if (f.since(30, 0, 12))
        f.attribute("geometry type", g.geometryType); // 1 real, 2 virtual; a file may hold others
    else
        readGeometryType(f, g);
    f.attribute("reset velocities", g.resetVelocities);
    f.attribute("material name", g.materialName);
    f.attribute("enclosed magnitude", enclosed);          // m^3; without meaning in an open group
    f.attribute("surface magnitude", g.surfaceMagnitude); // m^2
    f.attribute("time", g.time);                          // s
    f.attribute("gain", g.gain);                          // carried; nothing here uses it
    centresForm(f, g);
    f.attribute("velocity", g.velocity);       // m/s
    f.attribute("xform", g.transform);         // from the mesh as it was made to where it is
    f.attribute("translation", g.translation); // m
    if (g.materialBlockRef != nullptr)
        visit(*g.materialBlockRef);
    visit(g.electrostatic);
    visit(g.motionHistory);
}

void CHdf5CreatorDataReader::readGeometryGroup(CGeometryGroup& g)
{
    if (g.materialBlockRef == nullptr && in().hasAttribute(blockName))
        g.materialBlockRef = std::make_unique<CBlockLink>(&g.bounds);
    QString name;
    groupForm(in(), g, name, g.enclosedMagnitude, g.dataMask, [this](auto& part) { part.read(*this); });
    g.setName(name);
    if (options.examine && !g.closed && g.enclosedMagnitude != 0.0)
        report(eRepaired, NLogTitle::hdf5Read,
               "The attribute \"enclosed magnitude\" isn't 0 in an open group, which encloses nothing.");
    checkForces(g, options.examine);
    admitMemory(derivedMeshBytes(g), "meshes"); // of what isn't stored, but follows from the mesh
    g.settle();
    if ((options.geometryMask & eGeometryProperties) != 0)
        g.customProperties.read(*this);
}

void CHdf5CreatorDataWriter::writeGeometryGroup(const CGeometryGroup& g)
{
    QString name = g.displayedName;
    double enclosed = g.enclosedVolume();
    quint32 mask = eTriangleIds | eTriangleNodes | eTriangleForces;
    groupForm(out(), g, name, enclosed, mask, [this](const auto& part) { part.write(*this); });
    if ((options.geometryMask & eGeometryProperties) != 0)
        g.customProperties.write(*this);
    else
        out().group("CustomProperties/", [] {}); // left out by a mask, the group is there all the same
}

// ---------------------------------------------------------------- all groups

void CHdf5CreatorDataReader::readGeometryGroups(GeometryGroups& groups)
{
    groups.clear();
    CCustomPropertyManager* const properties =
        options.useNullPropertyManager ? applicationState().nullPropertyManager.get() : groups.managers.geometry;
    in().group("GeometryGroups/", [&] {
        in().children([&](const QString& number) {
            QString type;
            if (!in().attribute("type", type))
                return;
            std::unique_ptr<CGeometryGroup> group = createGeometry(type, properties);
            bool isNumber = false;
            const quint32 index = number.toUInt(&isNumber); // the group's name is its place in the list
            if (group == nullptr || !isNumber) {
                report(eLost, NLogTitle::hdf5Read,
                       "Geometry group " + shortened(number) + " of type \"" + shortened(type) +
                           "\" is skipped: " + (isNumber ? "no such type is known." : "its name isn't a number."));
                return;
            }
            group->index = index;
            group->factories->customProperties = groups.managers.particle;
            group->read(*this);
            groups.add(group.release(), false);
        });
    });
    groups.settle();
}

void CHdf5CreatorDataWriter::writeGeometryGroups(const GeometryGroups& groups)
{
    out().group("GeometryGroups/", [&] {
        for (const CGeometryGroup* group : groups.groups())
            if (group != nullptr)
                out().group(std::to_string(group->index), [&] {
                    out().attribute("type", group->typeName());
                    group->write(*this);
                });
    });
}

} // namespace NBrenmark
