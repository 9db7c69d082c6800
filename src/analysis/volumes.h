#pragma once
// Which points belong to a region, and how much room it takes.

#include "maths/quaternion.h"
#include "maths/vector.h"

#include <array>
#include <memory>
#include <string>
#include <utility>
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
    /// m^3
    virtual double volume() const = 0;
};

/// A region of several elements.
class ISelectionGroup
{
public:
    virtual ~ISelectionGroup() = default;
    /// Number of elements.
    virtual int size() const = 0;
    /// Of the element that holds a point, from 0; -1 for none.
    virtual int elementAt(const C3DPoint& point) const = 0;
    /// m^3; 0 for an element that isn't there
    virtual double elementVolume(int element) const = 0;
};

/// Where a region is at one timestep.
class CRegionVolume : public IVolume, public ISelectionGroup
{
public:
    bool contains(const C3DPoint& point) const override { return elementAt(point) >= 0; }
};

/// The bins of a lattice. A bin has its lower sides, and the last one along an axis its upper side too.
class CLatticeVolume : public CRegionVolume
{
public:
    explicit CLatticeVolume(const CLatticeSelection& lattice);

    double volume() const override;
    int size() const override { return bins[0] * bins[1] * bins[2]; }
    /// x varies fastest.
    int elementAt(const C3DPoint& point) const override;
    double elementVolume(int element) const override;

private:
    std::array<int, 3> bins;
    C3DPoint centre;
    std::array<double, 3> lengths;
    CQuaternion turn; ///< of the lattice about its centre
};

/// What geometry groups enclose, one element each. A box and a cylinder are known by their measures, whichever of
/// their sides are open; any other group must be a closed mesh.
class CGroupVolume : public CRegionVolume
{
public:
    explicit CGroupVolume(std::vector<std::unique_ptr<IVolume>> bodies) : bodies(std::move(bodies)) {}

    /// The sum of its elements.
    double volume() const override;
    int size() const override { return static_cast<int>(bodies.size()); }
    int elementAt(const C3DPoint& point) const override;
    double elementVolume(int element) const override;

private:
    std::vector<std::unique_ptr<IVolume>> bodies;
};

/// The volume of a region: that of its lattice, of its own geometry or of the geometry of the deck that it names.
/// \param deck  of the timestep; it and the region must outlive the volume
/// \param why   what is missing, for a result of null
std::unique_ptr<CRegionVolume> volumeOf(const CGeometricRegionSelection& region, const GeometryGroups& deck,
                                        std::string& why);

} // namespace NSelection
} // namespace NBrenmark
