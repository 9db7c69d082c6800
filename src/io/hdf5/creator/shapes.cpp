// What each shape adds to a geometry group: the parameters that its mesh was made from. The mesh itself
// is stored with the group and never made anew from them.

#include "io/hdf5/hdf5_reader.h"
#include "io/hdf5/hdf5_writer.h"

#include "model/geometry/box.h"
#include "model/geometry/cad_geometry.h"
#include "model/geometry/cylinder.h"
#include "model/geometry/polygon.h"

namespace NBrenmark {

// ---------------------------------------------------------------- box

template <class TForm, class TBox>
static void boxForm(TForm& f, TBox& box)
{
    f.attribute("centre", box.centre);          // m
    f.attribute("rotations", box.rotations);    // rad, about x, y and z
    f.attribute("width", box.width);            // m, along x
    f.attribute("length", box.length);          // m, along z
    f.attribute("height", box.height);          // m, along y
    f.flags("sides enabled", box.sidesEnabled); // a side that isn't has no triangles
}

void CHdf5CreatorDataReader::readBox(CBox& box)
{
    readGeometryGroup(box);
    boxForm(in(), box);
}

void CHdf5CreatorDataWriter::writeBox(const CBox& box)
{
    writeGeometryGroup(box);
    boxForm(out(), box);
}

// ---------------------------------------------------------------- cylinder

template <class TForm, class TCylinder>
static void cylinderForm(TForm& f, TCylinder& cylinder)
{
    f.attribute("start point", cylinder.startPoint);   // m
    f.attribute("end point", cylinder.endPoint);       // m
    f.attribute("radius start", cylinder.radiusStart); // m
    f.attribute("radius end", cylinder.radiusEnd);     // m
    f.attribute("cylinder detail", cylinder.detail);   // facets
    f.attribute("closed start", cylinder.closedStart); // has a cap
    f.attribute("closed end", cylinder.closedEnd);     // has a cap
}

void CHdf5CreatorDataReader::readCylinder(CCylinder& cylinder)
{
    cylinderForm(in(), cylinder); // first, for its ends go where the mesh is placed
    readGeometryGroup(cylinder);
}

void CHdf5CreatorDataWriter::writeCylinder(const CCylinder& cylinder)
{
    writeGeometryGroup(cylinder);
    cylinderForm(out(), cylinder);
}

// ---------------------------------------------------------------- polygon

template <class TForm, class TPolygon>
static void polygonForm(TForm& f, TPolygon& polygon)
{
    f.attribute("surface normal", polygon.normal);    // of length 1; of a rectangle as long as its area
    f.attribute("centre", polygon.centre);            // m
    f.attribute("radius", polygon.radius);            // m; of a rectangle without meaning
    f.attribute("rotation", polygon.rotation);        // rad
    f.attribute("num edges", polygon.edges);          // 4: a rectangle
    f.attribute("length side1", polygon.lengthSide1); // m, of a rectangle
    f.attribute("length side2", polygon.lengthSide2); // m, of a rectangle
    f.attribute("rotations", polygon.rotations);      // rad, about x, y and z
}

void CHdf5CreatorDataReader::readPolygon(CPolygon& polygon)
{
    readGeometryGroup(polygon);
    polygonForm(in(), polygon);
}

void CHdf5CreatorDataWriter::writePolygon(const CPolygon& polygon)
{
    writeGeometryGroup(polygon);
    polygonForm(out(), polygon);
}

// ---------------------------------------------------------------- import

template <class TForm, class TCad>
static void cadForm(TForm& f, TCad& cad)
{
    f.attribute("cad translation", cad.translationDistance);             // m
    f.attribute("cad rotation", cad.rotationAngle);                      // rad
    f.attribute("cad translation axis start", cad.translationAxisStart); // m
    f.attribute("cad translation axis end", cad.translationAxisEnd);     // m
    f.attribute("cad rotation axis start", cad.rotationAxisStart);       // m
    f.attribute("cad rotation axis end", cad.rotationAxisEnd);           // m
}

/// Up to 30.0.10 a distance had a sign and the axis any length: now the axis points where the import went
/// and is as long as its way.
static void takeSignFromDistance(CCADGeometry& cad)
{
    if (cad.translationDistance < 0.0) {
        std::swap(cad.translationAxisStart, cad.translationAxisEnd);
        cad.translationDistance = -cad.translationDistance;
    }
    const C3DVector direction = (cad.translationAxisEnd - cad.translationAxisStart).normalised();
    cad.translationAxisEnd = cad.translationAxisStart + cad.translationDistance * direction;
}

void CHdf5CreatorDataReader::readCADGeometry(CCADGeometry& cad)
{
    cadForm(in(), cad); // first, for the mesh is placed by it
    if (!in().since(30, 0, 11))
        takeSignFromDistance(cad);
    readGeometryGroup(cad);
}

void CHdf5CreatorDataWriter::writeCADGeometry(const CCADGeometry& cad)
{
    writeGeometryGroup(cad);
    cadForm(out(), cad);
}

} // namespace NBrenmark
