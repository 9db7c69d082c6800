#pragma once
// Selections of a region in space: whatever is inside belongs to them.

#include "analysis/selection.h"

namespace NBrenmark {
class GeometryGroups;
}

namespace NBrenmark::NSelection {

class CGeometricRegionSelection : public CAutoSelection
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
};

/// One element of a region: part of it, and never stored.
class CGeometricRegionElementSelection : public CSelection
{
public:
    CGeometricRegionElementSelection(const std::string& name, CDisplayOptions& particle, CDisplayOptions& contact,
                                     CGeometricRegionSelection& region)
        : CSelection(name, particle, contact), region(region)
    {}

    QString typeId() const override { return QStringLiteral("Geometric Region Element"); }
    bool isSubSelection() const override { return true; }

    CGeometricRegionSelection& region;
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
