// The shapes of geometry groups. Each comes before what all groups have in common.
#include "core/log.h"
#include "core/shortened.h"
#include "io/dem/dem_reader.h"
#include "io/dem/dem_writer.h"
#include "model/geometry/box.h"
#include "model/geometry/cad_geometry.h"
#include "model/geometry/cylinder.h"
#include "model/geometry/polygon.h"

namespace NBrenmark {

template <class TForm, class TBox>
static void boxForm(TForm&& f, TBox& box)
{
    f.point(box.centre);    // m
    f.point(box.rotations); // rad, about x, y and z
    f.f64(box.width);       // m, along x
    f.f64(box.length);      // m, along z
    f.f64(box.height);      // m, along y
    for (auto& side : box.sidesEnabled)
        f.flag(side);
}
void CDemCreatorDataReader::readBox(CBox& box)
{
    boxForm(in(), box);
    readGeometryGroup(box);
}
void CDemCreatorDataWriter::writeBox(const CBox& box)
{
    boxForm(out(), box);
    writeGeometryGroup(box);
}

template <class TForm, class TCylinder>
static void cylinderForm(TForm&& f, TCylinder& cylinder)
{
    f.point(cylinder.startPoint);                                    // m
    f.point(cylinder.endPoint);                                      // m
    f.f64(cylinder.radiusStart);                                     // m
    f.f64(cylinder.radiusEnd, from(2, 4, 15), cylinder.radiusStart); // m
    f.i32(cylinder.detail);                                          // facets
    f.flag(cylinder.closedStart);
    f.flag(cylinder.closedEnd);
}
void CDemCreatorDataReader::readCylinder(CCylinder& cylinder)
{
    cylinderForm(in(), cylinder);
    readGeometryGroup(cylinder);
}
void CDemCreatorDataWriter::writeCylinder(const CCylinder& cylinder)
{
    cylinderForm(out(), cylinder);
    writeGeometryGroup(cylinder);
}

/// Up to 2.4.25 two opposite points gave the size of a rectangle; what is left of them is
/// where it lies.
static void oldPolygonForm(CInForm& f, CPolygon& polygon)
{
    C3DVector corners[2];
    for (C3DVector& corner : corners) {
        f.dropI32();
        f.point(corner); // m
    }
    f.f64(polygon.radius);   // m; of a rectangle without meaning
    f.f64(polygon.rotation); // rad
    f.i32(polygon.edges);    // 4: a rectangle
    if (polygon.edges == 4)
        polygon.centre = C3DPoint(0.5 * (corners[0] + corners[1]));
}

template <class TForm, class TPolygon>
static void polygonForm(TForm&& f, TPolygon& polygon)
{
    f.point(polygon.normal); // of length 1; of a rectangle as long as its area
    f.dropI32(0, below(20, 0, 0));
    f.point(polygon.centre); // m
    if constexpr (std::decay_t<TForm>::isReading) {
        if (f.stores(upTo(2, 4, 25))) {
            oldPolygonForm(f, polygon);
            return;
        }
    }
    f.f64(polygon.radius);      // m; of a rectangle without meaning
    f.f64(polygon.rotation);    // rad
    f.i32(polygon.edges);       // 4: a rectangle
    f.f64(polygon.lengthSide1); // m, of a rectangle
    f.f64(polygon.lengthSide2); // m, of a rectangle
    f.point(polygon.rotations); // rad, about x, y and z
}
void CDemCreatorDataReader::readPolygon(CPolygon& polygon)
{
    polygonForm(in(), polygon);
    readGeometryGroup(polygon);
}
void CDemCreatorDataWriter::writePolygon(const CPolygon& polygon)
{
    polygonForm(out(), polygon);
    writeGeometryGroup(polygon);
}

/// Where an import was put. Before, it stays where it came from.
template <class TForm, class TGeometry>
static void cadForm(TForm&& f, TGeometry& geometry)
{
    if (!f.since(23, 0, 1))
        return;
    f.f64(geometry.translationDistance);    // m
    f.f64(geometry.rotationAngle);          // rad
    f.point(geometry.translationAxisStart); // m
    f.point(geometry.translationAxisEnd);   // m
    f.point(geometry.rotationAxisStart);    // m
    f.point(geometry.rotationAxisEnd);      // m
}

/// From 23.0.1 to 23.0.3 a file says where an import was put, but holds it there and no longer where it came from.
/// The mesh counts: put in its place a second time, it would be elsewhere.
static void keepMeshWhereItIs(CInForm f, CCADGeometry& geometry)
{
    geometry.updateCadTransform();
    if (!f.since(23, 0, 1) || f.since(23, 0, 4) || geometry.cadTransform.isIdentity())
        return;
    report(eRepaired, NLogTitle::legacyRead,
           "the mesh of geometry group \"" + shortened(geometry.name) +
               "\" is stored where it was put and not as it was imported. It stays there; how far it was shifted (" +
               std::to_string(geometry.translationDistance) + " m) and turned (" +
               std::to_string(geometry.rotationAngle) + " rad) is set to 0.",
           1, shortened(geometry.name));
    geometry.forgetPlacement();
}

void CDemCreatorDataReader::readCADGeometry(CCADGeometry& geometry)
{
    cadForm(in(), geometry);
    readGeometryGroup(geometry);
    keepMeshWhereItIs(in(), geometry);
}
void CDemCreatorDataWriter::writeCADGeometry(const CCADGeometry& geometry)
{
    cadForm(out(), geometry);
    writeGeometryGroup(geometry);
}

} // namespace NBrenmark
