#pragma once
// Selections of a region in space: whatever is inside belongs to them.

#include "analysis/selection.h"
#include "analysis/volumes.h"

namespace NBrenmark::NSelection {

class CGeometricRegionSelection : public CAutoSelection, public ISelectionGroup, public IVolume
{
public:
    using CAutoSelection::CAutoSelection;

    std::shared_ptr<GeometryGroups> ownGeometry; ///< its own; null when the region is geometry of the deck
    QString sectionName;                         ///< of that geometry; empty without
    QString startPointName;
    QString endPointName;
    QByteArray parameters; ///< of the region, as they are edited: bytes of no known layout, carried as they are
    qint32 elementCount = 0;
    QString source;
    double value1 = 0.0; ///< carried, as the next
    double value2 = 0.0;

    bool mayOwnGeometry(const IEntryForm&) const override { return true; }

    /// Finds where the region is: at each timestep, for geometry moves. Before that it holds nothing.
    /// \param deck  of the timestep; must outlive the questions below
    /// \param why   what is missing, for false
    bool place(const GeometryGroups& deck, std::string& why);
    bool contains(const C3DPoint& point) const override { return elementAt(point) >= 0; }
    double volume() const override { return placed == nullptr ? 0.0 : placed->volume(); }
    int size() const override { return placed == nullptr ? 0 : placed->size(); }
    int elementAt(const C3DPoint& point) const override { return placed == nullptr ? -1 : placed->elementAt(point); }
    double elementVolume(int element) const override
    {
        return placed == nullptr ? 0.0 : placed->elementVolume(element);
    }

protected:
    void rest(IEntryForm& f) override;
    /// Bytes of the record after the two values.
    virtual int bytesAfterValues(const IEntryForm& f) const = 0;
    /// What is stored ahead of the region itself.
    void frontForm(IEntryForm& f) { CAutoSelection::rest(f); }
    /// The names of what the region hangs on.
    void anchorForm(IEntryForm& f);
    /// Whether centre and rotation are stored; older regions have corners.
    static bool hasTurnedBoxes(const IEntryForm& f);

private:
    std::unique_ptr<CRegionVolume> placed; ///< null until it is placed
};

/// One element of a region: part of it, and never stored.
class CGeometricRegionElementSelection : public CSelection, public IVolume
{
public:
    CGeometricRegionElementSelection(const std::string& name, CDisplayOptions& particle, CDisplayOptions& contact,
                                     CGeometricRegionSelection& region, int element)
        : CSelection(name, particle, contact), region(region), element(element)
    {}

    QString typeId() const override { return QStringLiteral("Geometric Region Element"); }
    bool isSubSelection() const override { return true; }
    /// As the region is placed.
    bool contains(const C3DPoint& point) const override { return region.elementAt(point) == element; }
    double volume() const override { return region.elementVolume(element); }

    CGeometricRegionSelection& region;
    const int element; ///< its number in the region, from 0
};

/// A box cut into bins.
class CLatticeSelection : public CGeometricRegionSelection
{
public:
    using CGeometricRegionSelection::CGeometricRegionSelection;

    QString typeId() const override { return QStringLiteral("Lattice Bin Group"); }

    std::array<qint32, 3> bins{};
    C3DPoint centre;   ///< m
    C3DPoint size;     ///< m
    C3DPoint rotation; ///< rad
    bool isUpToDate = false;

    bool mayOwnGeometry(const IEntryForm& f) const override { return hasTurnedBoxes(f); }

protected:
    void rest(IEntryForm& f) override;
    int bytesAfterValues(const IEntryForm& f) const override;

private:
    void cornerForm(IEntryForm& f);
};

/// The elements of an imported mesh.
class CCadTemplateSelection : public CGeometricRegionSelection
{
public:
    using CGeometricRegionSelection::CGeometricRegionSelection;

    QString typeId() const override { return QStringLiteral("CAD Template Bin Group"); }

    C3DPoint triple1;
    C3DPoint triple2;

protected:
    void rest(IEntryForm& f) override;
    int bytesAfterValues(const IEntryForm& f) const override;
};

/// A box, a cylinder or another simple shape.
class CPrimitiveSelection : public CGeometricRegionSelection
{
public:
    using CGeometricRegionSelection::CGeometricRegionSelection;

    QString typeId() const override { return QStringLiteral("Primitive Geometry Bin"); }

    qint32 shape = 0;
    C3DPoint origin; ///< m
    C3DPoint firstAxis;
    C3DPoint secondAxis;
    double length1 = 0.0; ///< m
    double length2 = 0.0; ///< m
    C3DPoint triple1;
    C3DPoint triple2;
    qint32 facets = 0;

protected:
    void rest(IEntryForm& f) override;
    int bytesAfterValues(const IEntryForm& f) const override;
};

/// A primitive that measures: what it asks is in its queries.
class CSensorSelection : public CPrimitiveSelection
{
public:
    using CPrimitiveSelection::CPrimitiveSelection;
};

class CMassFlowSensorSelection : public CSensorSelection
{
public:
    using CSensorSelection::CSensorSelection;
    QString typeId() const override { return QStringLiteral("Primitive Mass Flow Sensor"); }
};

class CTotalMassSensorSelection : public CSensorSelection
{
public:
    using CSensorSelection::CSensorSelection;
    QString typeId() const override { return QStringLiteral("Primitive Total Mass Sensor"); }
};

class CVelocityProfileSensorSelection : public CSensorSelection
{
public:
    using CSensorSelection::CSensorSelection;
    QString typeId() const override { return QStringLiteral("Primitive Velocity Profile Sensor"); }
};

class CSegregationSensorSelection : public CSensorSelection
{
public:
    using CSensorSelection::CSensorSelection;
    QString typeId() const override { return QStringLiteral("Primitive Segregation Sensor"); }
};

class CBulkDensitySensorSelection : public CSensorSelection
{
public:
    using CSensorSelection::CSensorSelection;
    QString typeId() const override { return QStringLiteral("Primitive Bulk Density Sensor"); }
};

} // namespace NBrenmark::NSelection
