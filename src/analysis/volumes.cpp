#include "analysis/volumes.h"

#include "analysis/region_selections.h"
#include "model/geometry/geometry_group.h"
#include "model/geometry_groups.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace NBrenmark::NSelection {

// ---------------------------------------------------------------- lattices

/// A count below 1, as a damaged file has it, makes a lattice without bins.
CLatticeVolume::CLatticeVolume(const CLatticeSelection& lattice)
    : bins{lattice.bins[0], lattice.bins[1], lattice.bins[2]},
      centre(lattice.centre),
      size{lattice.size.x, lattice.size.y, lattice.size.z},
      turn(CQuaternion::fromEuler(lattice.rotation.toVector()))
{
    constexpr int mostBins = 1000; // along an axis; their product is an int
    const bool isSound = std::all_of(bins.begin(), bins.end(), [](int n) { return n >= 1 && n <= mostBins; });
    if (!isSound)
        bins = {0, 0, 0};
}

int CLatticeVolume::elementAt(const C3DPoint& point) const
{
    if (elementCount() == 0)
        return -1;
    const C3DVector local = turn.conjugated().rotate(point - centre);
    const std::array<double, 3> from{local.x + size[0] / 2, local.y + size[1] / 2, local.z + size[2] / 2};
    std::array<int, 3> place{};
    for (std::size_t axis = 0; axis < 3; ++axis) {
        if (!(from[axis] >= 0.0 && from[axis] <= size[axis]) || !std::isfinite(size[axis]))
            return -1;
        const double share = size[axis] > 0.0 ? from[axis] / size[axis] : 0.0;
        place[axis] = std::min(static_cast<int>(share * bins[axis]), bins[axis] - 1);
    }
    return (place[2] * bins[1] + place[1]) * bins[0] + place[0];
}

// ---------------------------------------------------------------- meshes

/// Solid angle of a triangle as seen from the origin, sr, with the sign of its side.
/// Source: Van Oosterom and Strackee, IEEE Trans. Biomed. Eng. 30 (1983) 125.
static double solidAngle(const C3DVector& a, const C3DVector& b, const C3DVector& c)
{
    const double la = a.length(), lb = b.length(), lc = c.length();
    return 2.0 * std::atan2(a.dot(b.cross(c)), la * lb * lc + a.dot(b) * lc + b.dot(c) * la + c.dot(a) * lb);
}

/// A closed mesh covers the whole sphere around a point inside, and nothing in sum around one outside.
static bool encloses(const CGeometryGroup& group, const C3DPoint& point)
{
    double total = 0.0;
    for (const TriangleNodes& corners : group.triangleNodes) {
        std::array<C3DVector, 3> seen;
        for (std::size_t i = 0; i < 3; ++i) {
            if (corners[i] >= group.coords.size())
                return false;
            seen[i] = group.coords[corners[i]] - point;
        }
        total += solidAngle(seen[0], seen[1], seen[2]);
    }
    const double halfSphere = 2.0 * std::acos(-1.0);
    return std::abs(total) > halfSphere;
}

int CMeshVolume::elementAt(const C3DPoint& point) const
{
    const auto found = std::find_if(groups.begin(), groups.end(),
                                    [&point](const CGeometryGroup* group) { return encloses(*group, point); });
    return found == groups.end() ? -1 : static_cast<int>(found - groups.begin());
}

// ---------------------------------------------------------------- of a selection

using Edge = std::array<double, 6>; // from one point to another, m

static bool isPoint(const Edge& edge) { return std::equal(edge.begin(), edge.begin() + 3, edge.begin() + 3); }

/// Whether every edge is passed as often in one direction as in the other, so that the surface has no rim. By places, for an
/// imported mesh has a vertex for each corner of each triangle. What a group says of itself isn't enough: a box is closed
/// with sides left out as well.
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

static std::unique_ptr<IVolume> meshVolume(const std::vector<const CGeometryGroup*>& groups, std::string& why)
{
    const bool isClosed = std::all_of(groups.begin(), groups.end(), [](const CGeometryGroup* group) {
        return group->closed && !group->triangleNodes.empty() && hasNoRim(*group);
    });
    if (isClosed && !groups.empty())
        return std::make_unique<CMeshVolume>(groups);
    why = groups.empty() ? "it has no mesh" : "its mesh isn't closed";
    return nullptr;
}

std::unique_ptr<IVolume> volumeOf(const CGeometricRegionSelection& region, const GeometryGroups& deck, std::string& why)
{
    if (const auto* const lattice = dynamic_cast<const CLatticeSelection*>(&region))
        return std::make_unique<CLatticeVolume>(*lattice);
    std::vector<const CGeometryGroup*> groups;
    if (region.ownGeometry != nullptr) {
        for (const CGeometryGroup* const group : region.ownGeometry->groups())
            if (group != nullptr)
                groups.push_back(group);
        return meshVolume(groups, why);
    }
    if (!region.sectionName.isEmpty()) {
        const CGeometryGroup* const group = deck.at(deck.indexOf(region.sectionName));
        if (group == nullptr) {
            why = "the deck has no geometry of the name that it refers to";
            return nullptr;
        }
        return meshVolume({group}, why);
    }
    why = "it has neither a mesh of its own nor a geometry of the deck";
    return nullptr;
}

} // namespace NBrenmark::NSelection
