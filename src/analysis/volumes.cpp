#include "analysis/volumes.h"

#include "analysis/region_selections.h"
#include "maths/transform.h"
#include "model/geometry/box.h"
#include "model/geometry/cylinder.h"
#include "model/geometry/geometry_group.h"
#include "model/geometry_groups.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <numeric>

namespace NBrenmark::NSelection {

// ---------------------------------------------------------------- lattices

/// A count below 1, as a damaged file has it, makes a lattice without bins.
CLatticeVolume::CLatticeVolume(const CLatticeSelection& lattice)
    : bins{lattice.bins[0], lattice.bins[1], lattice.bins[2]},
      centre(lattice.centre),
      lengths{lattice.size.x, lattice.size.y, lattice.size.z},
      turn(CQuaternion::fromEuler(lattice.rotation.toVector()))
{
    constexpr int mostBins = 1000; // along an axis; their product is an int
    const bool isSound = std::all_of(bins.begin(), bins.end(), [](int n) { return n >= 1 && n <= mostBins; });
    if (!isSound)
        bins = {0, 0, 0};
}

double CLatticeVolume::volume() const { return size() == 0 ? 0.0 : lengths[0] * lengths[1] * lengths[2]; }

double CLatticeVolume::elementVolume(int element) const
{
    return element >= 0 && element < size() ? volume() / size() : 0.0;
}

int CLatticeVolume::elementAt(const C3DPoint& point) const
{
    if (size() == 0)
        return -1;
    const C3DVector local = turn.conjugated().rotate(point - centre);
    const std::array<double, 3> from{local.x + lengths[0] / 2, local.y + lengths[1] / 2, local.z + lengths[2] / 2};
    std::array<int, 3> place{};
    for (std::size_t axis = 0; axis < 3; ++axis) {
        if (!(from[axis] >= 0.0 && from[axis] <= lengths[axis]) || !std::isfinite(lengths[axis]))
            return -1;
        const double share = lengths[axis] > 0.0 ? from[axis] / lengths[axis] : 0.0;
        place[axis] = std::min(static_cast<int>(share * bins[axis]), bins[axis] - 1);
    }
    return (place[2] * bins[1] + place[1]) * bins[0] + place[0];
}

// ---------------------------------------------------------------- boxes and cylinders

static const double pi = std::acos(-1.0);

namespace {

class CBoxBody : public IVolume
{
public:
    explicit CBoxBody(const CBox& box)
        : centre(box.centre),
          turn(CQuaternion::fromEuler(box.rotations)),
          half(0.5 * box.width, 0.5 * box.height, 0.5 * box.length)
    {
        if (!box.isStatic)
            toUnmoved = box.transform.inverse();
    }

    bool contains(const C3DPoint& point) const override
    {
        const C3DVector local = turn.conjugated().rotate(toUnmoved * point - centre);
        return std::abs(local.x) <= half.x && std::abs(local.y) <= half.y && std::abs(local.z) <= half.z;
    }
    double volume() const override { return 8.0 * half.x * half.y * half.z; }

private:
    C3DPoint centre;
    CQuaternion turn;
    C3DVector half; ///< m
    C3DTransform toUnmoved;
};

class CCylinderBody : public IVolume
{
public:
    explicit CCylinderBody(const CCylinder& cylinder)
        : start(cylinder.isStatic ? cylinder.startPoint : cylinder.currentStart),
          axis((cylinder.isStatic ? cylinder.endPoint : cylinder.currentEnd) - start),
          radius1(cylinder.radiusStart),
          radius2(cylinder.radiusEnd)
    {}

    /// Within the radius that the cone has at the point's height.
    bool contains(const C3DPoint& point) const override
    {
        const C3DVector fromStart = point - start;
        const double share = fromStart.dot(axis) / axis.squaredLength();
        if (!(share >= 0.0 && share <= 1.0)) // nor without a length
            return false;
        return (fromStart - axis * share).length() <= radius1 + (radius2 - radius1) * share;
    }
    /// pi h (r1^2 + r1 r2 + r2^2) / 3, of a frustum.
    double volume() const override
    {
        return pi * axis.length() * (radius1 * radius1 + radius1 * radius2 + radius2 * radius2) / 3.0;
    }

private:
    C3DPoint start;
    C3DVector axis;
    double radius1;
    double radius2;
};

// ---------------------------------------------------------------- meshes

/// Solid angle of a triangle as seen from the origin, sr, with the sign of its side.
/// Source: Van Oosterom and Strackee, IEEE Trans. Biomed. Eng. 30 (1983) 125.
double solidAngle(const C3DVector& a, const C3DVector& b, const C3DVector& c)
{
    const double la = a.length(), lb = b.length(), lc = c.length();
    return 2.0 * std::atan2(a.dot(b.cross(c)), la * lb * lc + a.dot(b) * lc + b.dot(c) * la + c.dot(a) * lb);
}

class CMeshBody : public IVolume
{
public:
    /// \param group  with corners that are there; not owned
    explicit CMeshBody(const CGeometryGroup& group) : group(group), lower(group.coords.front()), upper(lower)
    {
        for (const C3DPoint& corner : group.coords) {
            lower = C3DPoint(std::min(lower.x, corner.x), std::min(lower.y, corner.y), std::min(lower.z, corner.z));
            upper = C3DPoint(std::max(upper.x, corner.x), std::max(upper.y, corner.y), std::max(upper.z, corner.z));
        }
    }

    /// A closed mesh covers the whole sphere around a point inside, and nothing in sum around one outside.
    bool contains(const C3DPoint& point) const override
    {
        const bool isAround = point.x >= lower.x && point.y >= lower.y && point.z >= lower.z && point.x <= upper.x &&
                              point.y <= upper.y && point.z <= upper.z;
        return isAround && std::abs(sumOver(point, solidAngle)) > 2.0 * pi;
    }
    /// The sum of tetrahedra from one corner.
    double volume() const override
    {
        return std::abs(sumOver(group.coords.front(), [](const C3DVector& a, const C3DVector& b,
                                                         const C3DVector& c) { return a.dot(b.cross(c)); })) /
               6.0;
    }

private:
    template <class TOfTriangle>
    double sumOver(const C3DPoint& origin, const TOfTriangle& ofTriangle) const
    {
        double total = 0.0;
        for (const TriangleNodes& corners : group.triangleNodes)
            total += ofTriangle(group.coords[corners[0]] - origin, group.coords[corners[1]] - origin,
                                group.coords[corners[2]] - origin);
        return total;
    }

    const CGeometryGroup& group;
    C3DPoint lower; ///< of the box around it, m
    C3DPoint upper;
};

} // namespace

using Edge = std::array<double, 6>; // from one point to another, m

static bool isPoint(const Edge& edge) { return std::equal(edge.begin(), edge.begin() + 3, edge.begin() + 3); }

/// Whether every edge is passed as often in one direction as in the other, so that the surface has no rim. By places,
/// for an imported mesh has a vertex for each corner of each triangle. What a group says of itself isn't enough.
static bool hasNoRim(const CGeometryGroup& group)
{
    std::map<Edge, int> open;
    for (const TriangleNodes& nodes : group.triangleNodes)
        for (std::size_t corner = 0; corner < 3; ++corner) {
            const quint32 from = nodes[corner], to = nodes[(corner + 1) % 3];
            if (from >= group.coords.size() || to >= group.coords.size())
                return false;
            const C3DPoint &a = group.coords[from], &b = group.coords[to];
            const Edge forth{a.x, a.y, a.z, b.x, b.y, b.z}, back{b.x, b.y, b.z, a.x, a.y, a.z};
            if (!std::all_of(forth.begin(), forth.end(), [](double x) { return std::isfinite(x); }))
                return false;
            if (forth < back)
                ++open[forth];
            else
                --open[back];
        }
    return std::all_of(open.begin(), open.end(),
                       [](const auto& edge) { return edge.second == 0 || isPoint(edge.first); });
}

// ---------------------------------------------------------------- of a selection

/// Null for a mesh that isn't closed.
static std::unique_ptr<IVolume> bodyOf(const CGeometryGroup& group)
{
    if (const auto* const box = dynamic_cast<const CBox*>(&group))
        return std::make_unique<CBoxBody>(*box);
    if (const auto* const cylinder = dynamic_cast<const CCylinder*>(&group))
        return std::make_unique<CCylinderBody>(*cylinder);
    const bool isClosed = group.closed && !group.triangleNodes.empty() && hasNoRim(group);
    return isClosed ? std::make_unique<CMeshBody>(group) : nullptr;
}

static std::unique_ptr<CRegionVolume> groupVolume(const std::vector<const CGeometryGroup*>& groups, std::string& why)
{
    std::vector<std::unique_ptr<IVolume>> bodies;
    for (const CGeometryGroup* const group : groups) {
        bodies.push_back(bodyOf(*group));
        if (bodies.back() == nullptr) {
            why = "its mesh isn't closed";
            return nullptr;
        }
    }
    if (!bodies.empty())
        return std::make_unique<CGroupVolume>(std::move(bodies));
    why = "it has no mesh";
    return nullptr;
}

double CGroupVolume::volume() const
{
    return std::accumulate(bodies.begin(), bodies.end(), 0.0,
                           [](double sum, const auto& body) { return sum + body->volume(); });
}

double CGroupVolume::elementVolume(int element) const
{
    return element >= 0 && element < size() ? bodies[static_cast<std::size_t>(element)]->volume() : 0.0;
}

int CGroupVolume::elementAt(const C3DPoint& point) const
{
    const auto found =
        std::find_if(bodies.begin(), bodies.end(), [&point](const auto& body) { return body->contains(point); });
    return found == bodies.end() ? -1 : static_cast<int>(found - bodies.begin());
}

std::unique_ptr<CRegionVolume> volumeOf(const CGeometricRegionSelection& region, const GeometryGroups& deck,
                                        std::string& why)
{
    if (const auto* const lattice = dynamic_cast<const CLatticeSelection*>(&region))
        return std::make_unique<CLatticeVolume>(*lattice);
    std::vector<const CGeometryGroup*> groups;
    if (region.ownGeometry != nullptr) {
        for (const CGeometryGroup* const group : region.ownGeometry->groups())
            if (group != nullptr)
                groups.push_back(group);
        return groupVolume(groups, why);
    }
    if (!region.sectionName.isEmpty()) {
        const CGeometryGroup* const group = deck.at(deck.indexOf(region.sectionName));
        if (group == nullptr) {
            why = "the deck has no geometry of the name that it refers to";
            return nullptr;
        }
        return groupVolume({group}, why);
    }
    why = "it has neither a mesh of its own nor a geometry of the deck";
    return nullptr;
}

} // namespace NBrenmark::NSelection
