#include "analysis/region_selections.h"

#include "analysis/entry_form.h"

namespace NBrenmark::NSelection {

/// The two editions of the programs grew side by side, and came to these layouts at different versions.
bool CGeometricRegionSelection::hasTurnedBoxes(const IEntryForm& f)
{
    return f.edition == 1 ? f.since(25, 0, 4) : f.since(30, 0, 15);
}

void CGeometricRegionSelection::anchorForm(IEntryForm& f)
{
    f.text("sectionName", sectionName);
    f.text("startPointName", startPointName);
    f.text("endPointName", endPointName);
    if (f.isReading() && !f.since(30, 0, 18)) { // what stood there before meant something else
        startPointName.clear();
        endPointName.clear();
    }
}

void CGeometricRegionSelection::body(IEntryForm& f)
{
    frontForm(f);
    f.geometry("ownGeometry", ownGeometry);
    anchorForm(f);
    f.bytes("parameters", parameters);
    f.integer("elementCount", elementCount);
    f.text("source", source);
    f.real("value1", value1);
    f.real("value2", value2);
}

// ---------------------------------------------------------------- lattices

static void binForm(IEntryForm& f, std::array<qint32, 3>& bins)
{
    f.integer("binsX", bins[0]);
    f.integer("binsY", bins[1]);
    f.integer("binsZ", bins[2]);
}

/// The layout of a lattice that stands along the axes.
void CLatticeSelection::cornerForm(IEntryForm& f)
{
    frontForm(f);
    anchorForm(f);
    f.bytes("parameters", parameters);
    f.integer("elementCount", elementCount);
    binForm(f, bins);
    C3DPoint lowerCorner;
    f.point("lowerCorner", lowerCorner);
    f.point("size", size);
    centre = lowerCorner + size.toVector() * 0.5;
    rotation = C3DPoint();
    f.real("value1", value1);
    f.real("value2", value2);
}

void CLatticeSelection::body(IEntryForm& f)
{
    if (!hasTurnedBoxes(f)) {
        cornerForm(f);
    }
    else {
        CGeometricRegionSelection::body(f);
        binForm(f, bins);
        f.point("centre", centre);
        f.point("size", size);
        f.point("rotation", rotation);
    }
    if (f.isReading())
        isUpToDate = true;
}

// ---------------------------------------------------------------- meshes and primitives

void CCadTemplateSelection::body(IEntryForm& f)
{
    CGeometricRegionSelection::body(f);
    f.point("triple1", triple1);
    if (hasTurnedBoxes(f))
        f.point("triple2", triple2);
}

void CPrimitiveSelection::body(IEntryForm& f)
{
    CGeometricRegionSelection::body(f);
    f.integer("shape", shape);
    f.point("origin", origin);
    f.point("firstAxis", firstAxis);
    f.point("secondAxis", secondAxis);
    f.real("length1", length1);
    f.real("length2", length2);
    f.point("triple1", triple1);
    f.point("triple2", triple2);
    f.integer("facets", facets);
}

} // namespace NBrenmark::NSelection
