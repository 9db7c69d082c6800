// Meshes: taking one over, moving it, and computing what follows from it once a change.
#include "model/geometry/geometry_group.h"

#include "core/log.h"
#include "model/factories/particle_factory_list.h"
#include "model/geometry_groups.h"
#include "platform/loop_threads.h"
#include "visitors/file_visitor_reader.h"
#include "visitors/file_visitor_writer.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace NBrenmark {

/// Nothing lies between these corners: the box of a group without a mesh.
static CBoundingBox invertedBox()
{
    constexpr double far = 1e13;
    return CBoundingBox(C3DPoint(-far, -far, -far), C3DPoint(far, far, far));
}

CGeometryGroup::CGeometryGroup(CCustomPropertyManager* propertyManager)
    : bounds(invertedBox()),
      customProperties(propertyManager),
      previousCustomProperties(propertyManager),
      factories(std::make_unique<CParticleFactoryList>())
{}

CGeometryGroup::~CGeometryGroup() = default;

QString CGeometryGroup::typeName() const { return QStringLiteral("default"); }

QString CGeometryGroup::displayName() const { return QStringLiteral("Geometry"); }

void CGeometryGroup::read(IFileVisitorReader& v) { v.readGeometryGroup(*this); }

void CGeometryGroup::write(IFileVisitorWriter& v) const { v.writeGeometryGroup(*this); }

void CGeometryGroup::defaultCentreOfMass() {}

void CGeometryGroup::setName(const QString& newName)
{
    if (owner != nullptr)
        owner->rename(index, displayedName, newName);
    displayedName = newName;
    name = newName.toStdString();
    factories->setSectionName(newName);
}

// ---------------------------------------------------------------- the mesh

void CGeometryGroup::setMesh(std::vector<C3DPoint> meshCoords, std::vector<TriangleNodes> triangles)
{
    clearMesh();
    coords = std::move(meshCoords);
    triangleNodes = std::move(triangles);
    if (owner != nullptr)
        owner->registerElements(*this);
    updateBounds();
    recomputeDerivedData();
}

void CGeometryGroup::clearMesh()
{
    if (owner != nullptr)
        owner->releaseElements(*this);
    transform.setIdentity();
    enclosedMagnitude = 0.0;
    surfaceMagnitude = 0.0;
    bounds = invertedBox();
    vertexIds.clear();
    coords.clear();
    originalCoords.clear();
    triangleIds.clear();
    triangleNodes.clear();
    triangleForces.clear();
    triangleCentres.clear();
    triangleNormals.clear();
    triangleAreas.clear();
    cumulativeAreas.clear();
    electrostatic.charges.clear();
    electrostatic.words.clear();
    customProperties.resetAll();
    previousCustomProperties.resetAll();
    coloring = CTriangleColoringData();
    dataMask = 0;
    reportedBroken = {};
}

void CGeometryGroup::reserveTriangles(std::size_t count)
{
    triangleIds.reserve(count);
    triangleNodes.reserve(count);
    triangleForces.reserve(count);
    triangleCentres.reserve(count);
    triangleNormals.reserve(count);
    triangleAreas.reserve(count);
    cumulativeAreas.reserve(count);
    const std::size_t vertices = count + count / 2;
    coords.reserve(vertices);
    vertexIds.reserve(vertices);
}

void CGeometryGroup::replaceMesh(std::vector<C3DPoint> unmoved, std::vector<TriangleNodes> triangles)
{
    if (isStatic) {
        setMesh(std::move(unmoved), std::move(triangles));
        return;
    }
    originalCoords = std::move(unmoved);
    coords.resize(originalCoords.size());
    applyTransform(transform);

    // A new mesh clears both of them.
    const C3DTransform keptTransform = transform;
    std::vector<C3DPoint> keptOriginals = std::move(originalCoords);
    setMesh(std::move(coords), std::move(triangles));
    transform = keptTransform;
    originalCoords = std::move(keptOriginals);
}

// ---------------------------------------------------------------- moving it

void CGeometryGroup::applyTransform(const C3DTransform& matrix)
{
    constexpr qint64 worthThreads = 100;
    if (originalCoords.size() != coords.size())
        originalCoords = coords;
    isStatic = false;
    const C3DPoint* const from = originalCoords.data();
    C3DPoint* const to = coords.data();
    const auto count = static_cast<qint64>(coords.size());
#pragma omp parallel for schedule(static) num_threads(loopThreads(count > worthThreads))
    for (qint64 vertex = 0; vertex < count; ++vertex)
        to[vertex] = matrix * from[vertex];
}

void CGeometryGroup::moveTo(const C3DTransform& matrix)
{
    transform = matrix;
    applyTransform(transform);
    updateBounds();
    recomputeDerivedData();
}

void CGeometryGroup::standStill()
{
    const bool wasMoving = !isStatic;
    isStatic = true;
    transform.setIdentity();
    translation = C3DVector();
    if (!wasMoving)
        return;
    if (originalCoords.size() == coords.size())
        coords = originalCoords;
    updateBounds();
    recomputeDerivedData();
}

void CGeometryGroup::settle()
{
    const CBoundingBox storedBounds = bounds;
    const double storedSurface = surfaceMagnitude;
    const double storedVolume = enclosedMagnitude;
    factories->setBoundingShape(this);
    if (isStatic) {
        updateBounds();
        recomputeDerivedData();
    }
    else {
        coords.resize(originalCoords.size());
        moveTo(C3DTransform(transform));
    }
    bounds = storedBounds;
    surfaceMagnitude = storedSurface;
    enclosedMagnitude = closed ? storedVolume : 0.0;
}

// ---------------------------------------------------------------- textures

/// Where a co-ordinate lies between two others, 0 to 1; not-a-number between none.
static double placeBetween(double lower, double upper, double value)
{
    if (!(lower <= upper) || std::isnan(value))
        return std::numeric_limits<double>::quiet_NaN();
    return upper > lower ? std::clamp((value - lower) / (upper - lower), 0.0, 1.0) : 0.0;
}

bool CGeometryGroup::correctCoordinatesFromCubicSide(const C3DPoint& point, quint32 side, double& u, double& v) const
{
    constexpr quint32 sides = 6;
    const std::array<double, 3> places{placeBetween(bounds.lower.x, bounds.upper.x, point.x),
                                       placeBetween(bounds.lower.y, bounds.upper.y, point.y),
                                       placeBetween(bounds.lower.z, bounds.upper.z, point.z)};
    const quint32 axis = side / 2;
    u = side < sides ? places[(axis + 1) % 3] : std::numeric_limits<double>::quiet_NaN();
    v = side < sides ? places[(axis + 2) % 3] : u;
    if (!std::isnan(u) && !std::isnan(v))
        return true;
    u = v = 0.0;
    logMessage(eError, NLogTitle::textureError.text,
               "Error in generating texture co-ordinates, CGeometryGroup::correctCoordinatesFromCubicSide()", 0, 1);
    return false;
}

void CGeometryGroup::setCentreOfMass(const C3DPoint& centre)
{
    centreOfMass = centre;
    originalCentreOfMass = centre;
    pointOfAction = centre;
    originalPointOfAction = centre;
}

// ---------------------------------------------------------------- values by the names of attributes

bool CGeometryGroup::getValue(NAttributes::SAttributeValue& out, const NAttributes::CAttributeDescriptor* attribute,
                              quint32 row) const
{
    return valueOfRows(
        out, row, static_cast<quint32>(triangleNodes.size()), attribute, [](quint32) { return true; },
        [&](NAttributes::SAttributeValue& one, quint32 i) { return attribute->valueForGeometry(one, *this, i); });
}

} // namespace NBrenmark
