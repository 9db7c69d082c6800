// What each shape adds to a geometry group: the parameters that its mesh was made from. The mesh itself
// is stored with the group and never made anew from them.

#include "io/hdf5/hdf5_reader.h"
#include "io/hdf5/hdf5_writer.h"

#include "io/hdf5/geometry.h"
#include "model/geometry/box.h"
#include "model/geometry/cad_geometry.h"
#include "model/geometry/cylinder.h"
#include "model/geometry/polygon.h"

namespace NBrenmark {

// ---------------------------------------------------------------- box

template <class TForm, class TBox>
static void boxForm(TForm& f, TBox& box)
{
    f.attribute("centre", box.centre);
    f.attribute("rotations", box.rotations);
    f.attribute("width", box.width);
    f.attribute("length", box.length);
    f.attribute("height", box.height);
    f.flags("sides enabled", box.sidesEnabled);
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
    f.attribute("start point", cylinder.startPoint);
    f.attribute("end point", cylinder.endPoint);
    f.attribute("radius start", cylinder.radiusStart);
    f.attribute("radius end", cylinder.radiusEnd);
    f.attribute("cylinder detail", cylinder.detail);
    f.attribute("closed start", cylinder.closedStart);
    f.attribute("closed end", cylinder.closedEnd);
}

void CHdf5CreatorDataReader::readCylinder(CCylinder& cylinder)
{
    readGeometryGroup(cylinder);
    cylinderForm(in(), cylinder);
    // The ends move with the mesh, which was placed before they were known.
    cylinder.currentStart = cylinder.isStatic ? cylinder.startPoint : cylinder.transform * cylinder.startPoint;
    cylinder.currentEnd = cylinder.isStatic ? cylinder.endPoint : cylinder.transform * cylinder.endPoint;
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
    f.attribute("surface normal", polygon.normal);
    f.attribute("centre", polygon.centre);
    f.attribute("radius", polygon.radius);
    f.attribute("rotation", polygon.rotation);
    f.attribute("num edges", polygon.edges);
    f.attribute("length side1", polygon.lengthSide1);
    f.attribute("length side2", polygon.lengthSide2);
    f.attribute("rotations", polygon.rotations);
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
    f.attribute("cad translation", cad.translationDistance);
    f.attribute("cad rotation", cad.rotationAngle);
    f.attribute("cad translation axis start", cad.translationAxisStart);
    f.attribute("cad translation axis end", cad.translationAxisEnd);
    f.attribute("cad rotation axis start", cad.rotationAxisStart);
    f.attribute("cad rotation axis end", cad.rotationAxisEnd);
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
    readGeometryGroup(cad);
    cadForm(in(), cad);
    if (!in().since(30, 0, 11))
        takeSignFromDistance(cad);
    placeMesh(cad); // now that it is known where to
}

void CHdf5CreatorDataWriter::writeCADGeometry(const CCADGeometry& cad)
{
    writeGeometryGroup(cad);
    cadForm(out(), cad);
}

} // namespace NBrenmark
