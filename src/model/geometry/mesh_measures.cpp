// What follows from the mesh of a geometry group: its box, its triangles' areas, its volume and centre.
#include "core/log.h"
#include "core/shortened.h"
#include "model/geometry/geometry_group.h"
#include "platform/loop_threads.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace NBrenmark {

static void keepLeast(C3DPoint& least, const C3DPoint& p)
{
    least.x = std::min(least.x, p.x);
    least.y = std::min(least.y, p.y);
    least.z = std::min(least.z, p.z);
}

static void keepGreatest(C3DPoint& greatest, const C3DPoint& p)
{
    greatest.x = std::max(greatest.x, p.x);
    greatest.y = std::max(greatest.y, p.y);
    greatest.z = std::max(greatest.z, p.z);
}

void CGeometryGroup::updateBounds()
{
    constexpr qint64 worthThreads = 100000; // fewer are through before a team is awake
    constexpr double farthest = std::numeric_limits<double>::max();
    const auto count = static_cast<qint64>(coords.size());
    if (count == 0) {
        bounds = CBoundingBox();
        return;
    }
    C3DPoint least(farthest, farthest, farthest);
    C3DPoint greatest(-farthest, -farthest, -farthest);
#pragma omp parallel num_threads(loopThreads(count > worthThreads))
    {
        C3DPoint ownLeast(farthest, farthest, farthest);
        C3DPoint ownGreatest(-farthest, -farthest, -farthest);
#pragma omp for schedule(static) nowait
        for (qint64 vertex = 0; vertex < count; ++vertex) {
            keepLeast(ownLeast, coords[static_cast<std::size_t>(vertex)]);
            keepGreatest(ownGreatest, coords[static_cast<std::size_t>(vertex)]);
        }
#pragma omp critical(geometryBounds)
        {
            keepLeast(least, ownLeast);
            keepGreatest(greatest, ownGreatest);
        }
    }
    bounds = CBoundingBox(greatest, least);
}

static double determinant(const C3DPoint& a, const C3DPoint& b, const C3DPoint& c)
{
    return a.toVector().dot(b.toVector().cross(c.toVector()));
}

static bool isNumber(const C3DPoint& p) { return std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z); }

namespace {

/// The corners of a triangle, if they are to be had.
struct SCorners
{
    enum EState
    {
        eWhole,
        eOutside,  ///< a corner is no vertex of the mesh
        eNoNumbers ///< a coordinate is infinite or no number
    };

    SCorners(const std::vector<C3DPoint>& coords, const TriangleNodes& nodes)
    {
        const std::size_t vertices = coords.size();
        if (nodes[0] >= vertices || nodes[1] >= vertices || nodes[2] >= vertices) {
            state = eOutside;
            return;
        }
        a = coords[nodes[0]];
        b = coords[nodes[1]];
        c = coords[nodes[2]];
        if (!isNumber(a) || !isNumber(b) || !isNumber(c))
            state = eNoNumbers;
    }

    C3DVector sum() const { return a.toVector() + b.toVector() + c.toVector(); }

    C3DPoint a, b, c;
    EState state = eWhole;
};

} // namespace

void CGeometryGroup::recomputeDerivedData()
{
    const std::size_t count = triangleNodes.size();
    triangleForces.resize(count);
    triangleCentres.assign(count, C3DPoint());
    triangleNormals.assign(count, C3DVector());
    triangleAreas.assign(count, 0.0);
    cumulativeAreas.resize(count);
    customProperties.resize(static_cast<unsigned int>(count));
    previousCustomProperties.resize(static_cast<unsigned int>(count));

    double surface = 0.0;
    double volume = 0.0;
    std::size_t outside = 0;
    std::size_t noNumbers = 0;
    for (std::size_t triangle = 0; triangle < count; ++triangle) {
        const SCorners corners(coords, triangleNodes[triangle]);
        if (corners.state == SCorners::eWhole) {
            const C3DPoint& a = corners.a;
            const C3DVector e1 = corners.b - a;
            const C3DVector e2 = corners.c - a;
            const C3DVector sum = corners.sum();
            triangleCentres[triangle] = C3DPoint(sum.x / 3.0, sum.y / 3.0, sum.z / 3.0);
            C3DVector normal = e1.cross(e2);
            if (normal.squaredLength() > zeroLength)
                normal.normalise();
            triangleNormals[triangle] = normal;
            const double mixed = e1.dot(e2);
            // Rounding leaves a needle a little below zero.
            const double square = std::max(0.0, e1.squaredLength() * e2.squaredLength() - mixed * mixed);
            triangleAreas[triangle] = 0.5 * std::sqrt(square);
            volume += determinant(a, corners.b, corners.c) / 6.0; // of the tetrahedron over the origin, with its sign
        }
        else if (corners.state == SCorners::eOutside)
            ++outside;
        else
            ++noNumbers;
        surface += triangleAreas[triangle];
        cumulativeAreas[triangle] = surface;
    }
    surfaceMagnitude = surface;
    if (closed)
        enclosedMagnitude = std::abs(volume); // corners in the other order give it below 0
    reportBrokenTriangles(outside, noNumbers);
}

void CGeometryGroup::reportBrokenTriangles(std::size_t outside, std::size_t noNumbers)
{
    const std::array<std::size_t, 2> found{outside, noNumbers};
    if (found == reportedBroken)
        return;
    reportedBroken = found;
    const std::string whole =
        " of " + std::to_string(triangleNodes.size()) + " triangles of geometry group \"" + shortened(name);
    if (outside > 0)
        report(eRemark, NLogTitle::geometry,
               std::to_string(outside) + whole + "\" have a corner that is none of its " +
                   std::to_string(coords.size()) + " vertices. They are carried as they are and count as empty.",
               outside, shortened(name));
    if (noNumbers > 0)
        report(eRemark, NLogTitle::geometry,
               std::to_string(noNumbers) + whole +
                   "\" have a corner whose coordinates are no finite numbers. "
                   "They are carried as they are and count as empty.",
               noNumbers, shortened(name));
}

bool CGeometryGroup::canHold(quint64 triangles) const
{
    if (triangles <= mostTriangles)
        return true;
    report(eRemark, NLogTitle::geometry,
           "The parameters of " + displayName().toLower().toStdString() + " \"" + shortened(name) + "\" ask for " +
               std::to_string(triangles) + " triangles; a group holds at most " + std::to_string(mostTriangles) +
               ". Its mesh stays as it was.",
           1, shortened(name));
    return false;
}

void CGeometryGroup::computeCentreOfMass()
{
    if (!closed) {
        defaultCentreOfMass();
        return;
    }
    double weights = 0.0;
    C3DVector sum;
    for (const TriangleNodes& nodes : triangleNodes) {
        const SCorners corners(coords, nodes);
        if (corners.state != SCorners::eWhole)
            continue;
        const double weight = determinant(corners.a, corners.b, corners.c); // six times the tetrahedron's volume
        weights += weight;
        sum += weight * corners.sum();
    }
    if (weights == 0.0) // flat or without a mesh: nothing to weigh
        defaultCentreOfMass();
    else
        setCentreOfMass(C3DPoint(0.25 / weights * sum)); // a tetrahedron's centre is the mean of its four corners
}

} // namespace NBrenmark
