#include "model/geometry/geometry_group.h"

#include "model/factories/particle_factory_list.h"
#include "model/geometry_groups.h"
#include "visitors/file_visitor_reader.h"
#include "visitors/file_visitor_writer.h"

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
    toldBroken = {};
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
#pragma omp parallel for schedule(static) if (count > worthThreads)
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

void CGeometryGroup::setCentreOfMass(const C3DPoint& centre)
{
    centreOfMass = centre;
    originalCentreOfMass = centre;
    pointOfAction = centre;
    originalPointOfAction = centre;
}

} // namespace NBrenmark
