// The mesh of a geometry group below 20.0.0: triangle by triangle, each with its corners in full, and after them the
// numbers of the group.
#include "core/log.h"
#include "core/shortened.h"
#include "core/stop_flag.h"
#include "io/dem/dem_reader.h"
#include "io/dem/geometry_forms.h"
#include "io/dem/old_charge.h"
#include "maths/axis_angle.h"
#include "model/geometry/cad_geometry.h"

#include <cmath>
#include <map>
#include <unordered_map>

namespace NBrenmark {

static constexpr qint64 leastTriangleBytes = 4 + 48 + 24 + 4 + 4 + 4 + 2 * 4; // empty texts and lists, no corners
static constexpr qint64 cornerBytes = 4 + 24;                                 // id and point
/// Stands for a vertex that has no id of its own in the file.
static constexpr quint32 noVertexId = 0xFFFFFFFFu;

/// The vertices of a mesh, gathered from the corners of its triangles.
class CVertexGathering
{
public:
    explicit CVertexGathering(CGeometryGroup& group) : group(group) {}

    /// \return the place of the corner among the vertices
    quint32 place(quint32 id, const C3DPoint& point)
    {
        const auto known = byId.find(id);
        if (known == byId.end())
            return byId[id] = append(id, point);
        if (group.coords[known->second] == point)
            return known->second;
        const quint32 equal = find(point); // an id stands for two points: the point counts
        return equal != noVertexId ? equal : append(noVertexId, point);
    }

private:
    quint32 append(quint32 id, const C3DPoint& point)
    {
        const auto index = static_cast<quint32>(group.coords.size());
        group.coords.push_back(point);
        group.vertexIds.push_back(id);
        byX.emplace(point.x, index);
        return index;
    }

    /// The first vertex at that point; noVertexId if there is none.
    quint32 find(const C3DPoint& point) const
    {
        const double tolerance = 1e-11 * std::abs(point.x) + 1e-30; // wider than the fuzzy test, which decides
        quint32 first = noVertexId;
        for (auto i = byX.lower_bound(point.x - tolerance); i != byX.end() && i->first <= point.x + tolerance; ++i)
            if (i->second < first && group.coords[i->second] == point)
                first = i->second;
        return first;
    }

    CGeometryGroup& group;
    std::unordered_map<quint32, quint32> byId;
    std::multimap<double, quint32> byX;
};

static TriangleNodes readCorners(CInForm& f, CVertexGathering& vertices)
{
    TriangleNodes nodes{};
    const quint32 count = f.count("corner", cornerBytes);
    for (quint32 i = 0; i < count; ++i) {
        quint32 id = 0;
        C3DPoint point;
        f.i32(id);
        f.point(point); // m
        if (i < nodes.size())
            nodes[i] = vertices.place(id, point);
    }
    if (count < nodes.size())
        throw std::runtime_error("byte " + std::to_string(f.stream.position()) + ": a triangle of " +
                                 std::to_string(count) + " corners");
    return nodes;
}

static void dropWords(CInForm& f)
{
    const quint32 count = f.count("word", 4);
    for (quint32 i = 0; i < count; ++i)
        f.dropI32();
}

/// Velocity and rotations are those of the group: every triangle repeats them.
static void readTriangle(CDemCreatorDataReader& reader, CInForm& f, CGeometryGroup& group, CVertexGathering& vertices)
{
    QString dropped;
    CAxisAngle force; // force, torque and compressive force
    quint32 id = 0;
    double charge = 0.0;
    f.text(dropped); // a name that nothing uses
    reader.readAxisAngle(force);
    f.point(group.velocity); // m/s
    group.motionHistory.read(reader);
    if (f.stores(from(2, 4, 2))) // before, a triangle has no corners
        group.triangleNodes.push_back(readCorners(f, vertices));
    f.text(group.materialName); // the group's own comes after the mesh, and counts
    f.i32(id);
    dropWords(f);
    dropWords(f);
    if (storesOldCharge(f))
        f.f64(charge); // C
    C3DVector droppedForce;
    f.point(droppedForce, from(13, 0, 1).upTo(13, 0, 1), C3DVector()); // in this one version
    group.triangleIds.push_back(id);
    group.triangleForces.push_back(
        {force.start.x, force.start.y, force.start.z, force.end.x, force.end.y, force.end.z, force.angle});
    group.electrostatic.charges.push_back(charge);
}

/// Before 2.4.2 a triangle names no corners: nothing is left of where it was.
static void dropTrianglesWithoutCorners(CGeometryGroup& group, quint32 count)
{
    group.triangleIds.clear();
    group.triangleForces.clear();
    group.electrostatic.charges.clear();
    report(eNotCarried, NLogTitle::legacyRead,
           counted(count, "triangle") + " of geometry group \"" + shortened(group.name) +
               "\" dropped: this version stores them without their corners",
           count, shortened(group.name));
}

static void readTrailer(CDemCreatorDataReader& reader, CInForm& f, CGeometryGroup& group)
{
    qint32 isReal = 1;
    QString name;
    f.flag(group.closed); // the mesh encloses a volume
    f.text(group.materialName);
    f.i32(isReal);                                    // above 0: real, otherwise virtual
    f.text(name, upTo(2, 4, 6), group.displayedName); // from 2.4.7 on it comes before the mesh
    f.dropI32();
    f.f64(group.enclosedMagnitude); // m^3; without meaning in an open group
    f.f64(group.surfaceMagnitude);  // m^2
    f.flag(group.resetVelocities);
    f.f64(group.time, from(2, 4, 4), 0.0); // s
    f.dropF64(from(2, 4, 12).below(2, 4, 31));
    f.f64(group.gain, from(2, 4, 31), 0.0);                               // carried; nothing here uses it
    f.flag(group.resetVelocities, from(2, 4, 34), group.resetVelocities); // again, and this one counts
    f.point(group.centreOfMass, from(2, 4, 59), C3DPoint());              // m
    if (f.stores(from(13, 0, 1)))
        group.electrostatic.read(reader);
    f.i32(isReal, from(13, 0, 3), isReal); // again, and this one counts
    group.geometryType = isReal > 0 ? eRealGeometry : eVirtualGeometry;
    group.setName(name);
}

void readOldMesh(CDemCreatorDataReader& reader, CInForm& f, CGeometryGroup& group)
{
    CVertexGathering vertices(group);
    const quint32 count = f.count("triangle", leastTriangleBytes);
    f.stream.rowsAtWork = count;
    for (quint32 i = 0; i < count; ++i) {
        leaveIfStopped();
        readTriangle(reader, f, group, vertices);
    }
    group.isStatic = true;
    group.dataMask = eTriangleIds | eTriangleNodes | eTriangleForces | (storesOldCharge(f) ? eTriangleCharges : 0u);
    readTrailer(reader, f, group);
    if (count > 0 && group.triangleNodes.empty())
        dropTrianglesWithoutCorners(group, count);
    group.originalCentreOfMass = group.centreOfMass;
    group.pointOfAction = group.centreOfMass;
    group.originalPointOfAction = group.centreOfMass;
    if (auto* const cad = dynamic_cast<CCADGeometry*>(&group))
        cad->importedCoords = group.coords;
}

} // namespace NBrenmark
