// What a shape's mesh was made from: an element at the end of its group, named as the shape is.

#include "model/geometry/box.h"
#include "model/geometry/cad_geometry.h"
#include "model/geometry/cylinder.h"
#include "model/geometry/polygon.h"
#include "xml/serialisers.h"

namespace NBrenmark {

static const char* const closedWord = "closed";
static const char* const openWord = "open";

// ---------------------------------------------------------------- box

template <class TForm, class TBox>
static void boxForm(TForm& f, TBox& box)
{
    f.attribute("width", box.width);   // m, along x
    f.attribute("height", box.height); // m, along y
    f.attribute("length", box.length); // m, along z
    f.xyz("centre_", box.centre);      // m
    f.xyz("rotation_", box.rotations); // rad
    for (std::size_t side = 0; side < box.sidesEnabled.size(); ++side)
        f.word("side_" + QString::number(side + 1), box.sidesEnabled[side], closedWord, openWord);
}

void CXmlReader::readBox(CBox& box) { boxForm(in(), box); }
void CXmlWriter::writeBox(const CBox& box)
{
    writeGeometryGroup(box);
    out().element(CBox::word, [&] { boxForm(out(), box); });
}

// ---------------------------------------------------------------- cylinder

template <class TForm, class TCylinder>
static void cylinderForm(TForm& f, TCylinder& cylinder)
{
    f.attribute("radius1", cylinder.radiusStart); // m
    f.attribute("radius2", cylinder.radiusEnd);   // m
    f.attribute("detail", cylinder.detail);       // facets
    f.word("end1", cylinder.closedStart, closedWord, openWord);
    f.word("end2", cylinder.closedEnd, closedWord, openWord);
    f.xyz("start_", cylinder.startPoint); // m
    f.xyz("end_", cylinder.endPoint);     // m
}

void CXmlReader::readCylinder(CCylinder& cylinder)
{
    cylinderForm(in(), cylinder);
    if (attributes.has("radius")) // in documents of before there were cones
        cylinder.radiusStart = cylinder.radiusEnd = attributes.number("radius");
}

void CXmlWriter::writeCylinder(const CCylinder& cylinder)
{
    writeGeometryGroup(cylinder);
    out().element(CCylinder::word, [&] { cylinderForm(out(), cylinder); });
}

// ---------------------------------------------------------------- polygon

template <class TForm, class TPolygon>
static void polygonForm(TForm& f, TPolygon& polygon)
{
    f.attribute("edges", polygon.edges);       // 4: a rectangle
    f.attribute("radius", polygon.radius);     // m
    f.attribute("rotation", polygon.rotation); // rad
    f.xyz("normal_", polygon.normal);
    f.xyz("centre_", polygon.centre);           // m
    f.xyz("rotation_", polygon.rotations);      // rad
    f.attribute("side_1", polygon.lengthSide1); // m
    f.attribute("side_2", polygon.lengthSide2); // m
}

/// Old documents give a rectangle by the middle of a side and the end of it, from the centre.
void CXmlReader::readPolygon(CPolygon& polygon)
{
    constexpr qint32 fewestEdges = 3;
    constexpr qint32 rectangle = 4;
    polygonForm(in(), polygon);
    attributes.know("end_");
    attributes.know("mid_");
    if (polygon.edges < 1)
        polygon.edges = fewestEdges;
    if (polygon.edges != rectangle || attributes.has("side_1") || attributes.has("side_2"))
        return;
    C3DPoint end, middle;
    in().xyz("end_", end);
    in().xyz("mid_", middle);
    polygon.lengthSide1 = (end - polygon.centre).length();
    polygon.lengthSide2 = (middle - polygon.centre).length();
    polygon.centre = end + 0.5 * (middle - end);
}

void CXmlWriter::writePolygon(const CPolygon& polygon)
{
    writeGeometryGroup(polygon);
    out().element(CPolygon::word, [&] { polygonForm(out(), polygon); });
}

// ---------------------------------------------------------------- import

/// There is nothing but the mesh.
void CXmlReader::readCADGeometry(CCADGeometry&) {}
void CXmlWriter::writeCADGeometry(const CCADGeometry& cad)
{
    writeGeometryGroup(cad);
    out().element(CCADGeometry::word, [] {});
}

} // namespace NBrenmark
