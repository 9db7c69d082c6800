#pragma once
// Which points belong to a selection of a region.

#include "maths/quaternion.h"
#include "maths/vector.h"

#include <array>
#include <memory>
#include <string>
#include <vector>

namespace NBrenmark {

class CGeometryGroup;
class GeometryGroups;

namespace NSelection {

class CGeometricRegionSelection;
class CLatticeSelection;

/// A part of space.
class IVolume
{
public:
    virtual ~IVolume() = default;
    virtual bool contains(const C3DPoint& point) const = 0;
};

/// A region of several elements.
class ISelectionGroup
{
public:
    virtual ~ISelectionGroup() = default;
    virtual int elementCount() const = 0;
    /// Of the element that holds a point, from 0; -1 for none.
    virtual int elementAt(const C3DPoint& point) const = 0;
};

/// The bins of a lattice. A bin has its lower sides, and the last one along an axis its upper side too.
class CLatticeVolume : public IVolume, public ISelectionGroup
{
public:
    explicit CLatticeVolume(const CLatticeSelection& lattice);

    bool contains(const C3DPoint& point) const override { return elementAt(point) >= 0; }
    int elementCount() const override { return bins[0] * bins[1] * bins[2]; }
    /// x varies fastest.
    int elementAt(const C3DPoint& point) const override;

private:
    std::array<int, 3> bins;
    C3DPoint centre;
    std::array<double, 3> size;
    CQuaternion turn; ///< of the lattice about its centre
};

/// What closed meshes enclose, one element each.
class CMeshVolume : public IVolume, public ISelectionGroup
{
public:
    /// \param groups  closed ones, not owned
    explicit CMeshVolume(std::vector<const CGeometryGroup*> groups) : groups(std::move(groups)) {}

    bool contains(const C3DPoint& point) const override { return elementAt(point) >= 0; }
    int elementCount() const override { return static_cast<int>(groups.size()); }
    int elementAt(const C3DPoint& point) const override;

private:
    std::vector<const CGeometryGroup*> groups;
};

/// The volume of a region: that of its lattice, of its own meshes or of the geometry of the deck that it names.
/// \param deck  of the timestep; it and the region must outlive the volume
/// \param why   what is missing, for a result of null
std::unique_ptr<IVolume> volumeOf(const CGeometricRegionSelection& region, const GeometryGroups& deck,
                                  std::string& why);

} // namespace NSelection
} // namespace NBrenmark
