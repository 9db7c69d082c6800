// Geometry groups: the list, and what groups of all shapes have in common.
#include "model/geometry_groups.h"

#include "core/deck/application_state.h"
#include "core/log.h"
#include "core/memory_ceiling.h"
#include "core/shortened.h"
#include "core/stop_flag.h"
#include "io/dem/dem_reader.h"
#include "io/dem/dem_writer.h"
#include "io/dem/geometry_forms.h"
#include "model/factories/particle_factory_list.h"
#include "model/geometry/cad_geometry.h"
#include "model/geometry/geometry_factory.h"
#include "model/geometry/mesh_bytes.h"

namespace NBrenmark {

static constexpr qint64 leastGroupBytes = 4;

/// What a creator block holds of each triangle.
static constexpr quint32 creatorFields = eTriangleIds | eTriangleNodes | eTriangleForces;

// ---------------------------------------------------------------- parts of a group

template <class TForm, class TInertia>
static void inertiaForm(TForm&& f, TInertia& inertia)
{
    for (auto& value : inertia.values)
        f.f64(value); // kg m^2
}
void CDemCreatorDataReader::readMomentOfInertia(CMomentOfInertia& inertia) { inertiaForm(in(), inertia); }
void CDemCreatorDataWriter::writeMomentOfInertia(const CMomentOfInertia& inertia) { inertiaForm(out(), inertia); }

template <class TForm, class TCharge>
static void chargeForm(TForm&& f, TCharge& charge)
{
    f.flag(charge.exempt);     // takes no part in charging
    f.f64(charge.startCharge); // C
}
void CDemCreatorDataReader::readGeometryGroupElectrostatic(CGeometryGroupElectrostatic& charge)
{
    chargeForm(in(), charge);
}
void CDemCreatorDataWriter::writeGeometryGroupElectrostatic(const CGeometryGroupElectrostatic& charge)
{
    chargeForm(out(), charge);
}

template <class TForm, class TGroup>
static void reality(TForm& f, TGroup& group)
{
    if constexpr (TForm::isReading) {
        qint32 isReal = 0;
        f.i32(isReal);
        group.geometryType = isReal > 0 ? eRealGeometry : eVirtualGeometry;
    }
    else
        f.flag(group.geometryType == eRealGeometry);
}

/// The numbers after the mesh, up to the motion.
template <class TForm, class TGroup>
static void bodyForm(TForm& f, TGroup& group)
{
    f.flag(group.closed); // the mesh encloses a volume
    f.text(group.materialName);
    reality(f, group);
    f.dropI32();                    // always there, never used
    f.f64(group.enclosedMagnitude); // m^3; without meaning in an open group
    f.f64(group.surfaceMagnitude);  // m^2
    f.f64(group.time);              // s
    f.f64(group.gain);              // carried; nothing here uses it
    f.flag(group.resetVelocities);
    f.point(group.centreOfMass);                                              // m
    f.point(group.originalCentreOfMass, from(25, 0, 0), group.centreOfMass);  // m
    f.point(group.pointOfAction, from(25, 0, 2), group.centreOfMass);         // m
    f.point(group.originalPointOfAction, from(25, 0, 2), group.centreOfMass); // m
    f.point(group.velocity);                                                  // m/s
}

// ---------------------------------------------------------------- the mesh

/// What comes before the arrays of a mesh.
struct SMeshHead
{
    quint32 vertices = 0;
    quint32 triangles = 0;
    bool deflated = false;
    bool isStatic = true;
    quint32 mask = creatorFields;
};

template <class TForm, class THead>
static void meshHeadForm(TForm& f, THead& head)
{
    const SGate countsInFront = from(20, 0, 3);
    f.i32(head.vertices);
    f.i32(head.triangles, countsInFront, 0u);
    f.flag8(head.deflated, countsInFront, false);
    f.flag8(head.isStatic, gateGeometryInCreator, true); // never moved so far
    f.i32(head.mask, from(20, 0, 16), creatorFields);    // ETriangleField
}

/// A CAD mesh is stored as it was imported, and once more as it was made when it moves; all others
/// as they were made.
template <class TForm, class TArrays, class TGroup>
static void vertexForm(TForm& f, TArrays& arrays, quint32 vertices, TGroup& group)
{
    arrays.elements("vertex ids", group.vertexIds, vertices); // unique in the deck, or all are numbered anew
    auto& made = group.isStatic ? group.coords : group.originalCoords;
    if constexpr (TForm::isReading) {
        auto* const cad = dynamic_cast<CCADGeometry*>(&group);
        if (cad != nullptr && f.since(23, 0, 4)) {
            arrays.elements("imported vertices", cad->importedCoords, vertices); // m, as the import came
            if (group.isStatic)
                return;
        }
        arrays.elements("vertices", made, vertices); // m
        if (cad != nullptr && !f.since(23, 0, 4))
            cad->importedCoords = made;
    }
    else {
        const auto* const cad = dynamic_cast<const CCADGeometry*>(&group);
        if (cad != nullptr)
            arrays.elements("imported vertices", cad->importedCoords, vertices); // m, as the import came
        if (cad == nullptr || !group.isStatic)
            arrays.elements("vertices", made, vertices); // m
    }
}

static void readMesh(CInForm& f, CGeometryGroup& group)
{
    SMeshHead head;
    meshHeadForm(f, head);
    group.isStatic = head.isStatic;
    group.dataMask = head.mask;
    const auto readTriangles = [&](CArrayGroupReader& arrays) {
        triangleForm(arrays, head.mask, group.triangleIds, group.triangleNodes, group.triangleForces,
                     group.electrostatic.charges);
    };
    f.group(head.deflated, head.triangles, [&](CArrayGroupReader& arrays) {
        vertexForm(f, arrays, head.vertices, group);
        if (f.since(20, 0, 3) && head.triangles != 0)
            readTriangles(arrays);
    });
    if (!f.since(20, 0, 3)) {
        f.i32(head.triangles); // before 20.0.3 they are counted here, and always raw
        f.group(false, head.triangles, readTriangles);
    }
    if (group.triangleNodes.size() != head.triangles)
        report(eLost, NLogTitle::legacyRead,
               counted(head.triangles, "triangle") + " of geometry group \"" + shortened(group.name) +
                   "\" have no corners in the file and are dropped",
               head.triangles, shortened(group.name));
}

static void writeMesh(COutForm& f, const CGeometryGroup& group)
{
    SMeshHead head;
    head.vertices = static_cast<quint32>(group.vertexIds.size());
    head.triangles = static_cast<quint32>(group.triangleNodes.size());
    head.deflated = compressArrays() && head.triangles >= leastDeflatedRows;
    head.isStatic = group.isStatic;
    if (head.triangles != 0 && group.electrostatic.charges.size() == head.triangles)
        head.mask |= eTriangleCharges;
    meshHeadForm(f, head);
    f.group(head.deflated, head.triangles, [&](CArrayGroupWriter& arrays) {
        vertexForm(f, arrays, head.vertices, group);
        triangleForm(arrays, head.mask, group.triangleIds, group.triangleNodes, group.triangleForces,
                     group.electrostatic.charges);
    });
}

// ---------------------------------------------------------------- a group

void CDemCreatorDataReader::readGeometryGroup(CGeometryGroup& group)
{
    CInForm f = in();
    group.kinematics.read(*this);
    group.factories->read(*this);
    group.bounds.read(*this);
    group.momentOfInertia.read(*this);
    f.point(group.desiredForce, from(2, 4, 31), C3DVector()); // N
    QString name;
    f.text(name, from(2, 4, 7), QString()); // before, it comes after the mesh
    group.setName(name);
    f.i32(group.uniqueId, from(24, 0, 30), CGeometryGroup::notSet); // unique in the deck

    group.transform.setIdentity();
    if (f.stores(gateMeshArrays)) {
        readMesh(f, group);
        bodyForm(f, group);
        group.motionHistory.read(*this);
        if (f.stores(gateGeometryInCreator))
            readMatrix4(group.transform);                        // from the mesh as it was made to where it is
        f.point(group.translation, from(25, 0, 3), C3DVector()); // m
        if (f.stores(gateGroupCharge))
            group.electrostatic.read(*this);
    }
    else
        readOldMesh(*this, f, group);
    admitMemory(derivedMeshBytes(group), "meshes"); // of what isn't stored, but follows from the mesh
    group.settle();

    group.customProperties.resetToInitialValues(static_cast<unsigned int>(group.triangleNodes.size()));
    if (f.since(23, 0, 0))
        group.customProperties.read(*this);
}

void CDemCreatorDataWriter::writeGeometryGroup(const CGeometryGroup& group)
{
    COutForm f = out();
    group.kinematics.write(*this);
    group.factories->write(*this);
    group.bounds.write(*this);
    group.momentOfInertia.write(*this);
    f.point(group.desiredForce); // N
    f.text(group.displayedName);
    f.i32(group.uniqueId); // unique in the deck

    writeMesh(f, group);
    bodyForm(f, group);
    group.motionHistory.write(*this);
    writeMatrix4(group.transform); // from the mesh as it was made to where it is
    f.point(group.translation);    // m
    group.electrostatic.write(*this);
    group.customProperties.write(*this);
}

// ---------------------------------------------------------------- the list

/// A group by the word of its shape; null, with a report, for one that names no shape.
static std::unique_ptr<CGeometryGroup> makeGroup(CInForm& f, CCustomPropertyManager* properties)
{
    QString shape;
    f.text(shape, from(2, 4, 5), QStringLiteral("default")); // no shapes before
    std::unique_ptr<CGeometryGroup> group = createGeometry(shape, properties);
    if (group == nullptr)
        report(eLost, NLogTitle::legacyRead,
               "geometry group of the unknown shape \"" + shortened(shape) + "\" skipped");
    return group;
}

void CDemCreatorDataReader::readGeometryGroups(GeometryGroups& groups)
{
    groups.clear();
    CInForm f = in();
    const quint32 count = f.count("geometry group", leastGroupBytes);
    CCustomPropertyManager* const properties = stream->options.useNullPropertyManager
                                                   ? applicationState().nullPropertyManager.get()
                                                   : groups.managers.geometry;
    for (quint32 i = 0; i < count; ++i) {
        leaveIfStopped();
        quint32 index = 0;
        f.i32(index);
        std::unique_ptr<CGeometryGroup> group = makeGroup(f, properties);
        if (group == nullptr)
            continue;
        group->index = index;
        group->factories->customProperties = groups.managers.particle;
        group->read(*this);
        CGeometryGroup& added = *group;
        groups.add(group.release(), false);
        if (!f.since(24, 0, 30))
            added.uniqueId = added.index; // all are different, and stay so from read to read
    }
    groups.settle();
}

void CDemCreatorDataWriter::writeGeometryGroups(const GeometryGroups& groups)
{
    COutForm f = out();
    f.i32(groups.count());
    for (const CGeometryGroup* group : groups.groups()) {
        if (group == nullptr)
            continue;
        f.i32(group->index);
        f.text(group->typeName());
        group->write(*this);
    }
}

} // namespace NBrenmark
