// The text of what a shape's mesh was made from.
#include "io/text/text_writer.h"
#include "model/geometry/box.h"
#include "model/geometry/cad_geometry.h"
#include "model/geometry/cylinder.h"
#include "model/geometry/polygon.h"

namespace NBrenmark {

void CTextWriter::writeBox(const CBox& box)
{
    writeGeometryGroup(box);
    if (!covers(ETextPart::eDefinition))
        return;
    out.group("box", [&] {
        out.value("centre", box.centre);
        out.value("rotations", box.rotations); // rad, about x, y and z
        out.value("width", box.width);         // m, along x
        out.value("length", box.length);       // m, along z
        out.value("height", box.height);       // m, along y
        out.group("sidesEnabled", [&] {
            for (size_t side = 0; side < box.sidesEnabled.size(); ++side)
                out.value(std::to_string(side).c_str(), box.sidesEnabled[side]);
        });
    });
}

void CTextWriter::writeCylinder(const CCylinder& cylinder)
{
    writeGeometryGroup(cylinder);
    if (!covers(ETextPart::eDefinition))
        return;
    out.group("cylinder", [&] {
        out.value("startPoint", cylinder.startPoint);
        out.value("endPoint", cylinder.endPoint);
        out.value("radiusStart", cylinder.radiusStart);
        out.value("radiusEnd", cylinder.radiusEnd);
        out.value("detail", cylinder.detail); // facets
        out.value("closedStart", cylinder.closedStart);
        out.value("closedEnd", cylinder.closedEnd);
    });
}

void CTextWriter::writePolygon(const CPolygon& polygon)
{
    writeGeometryGroup(polygon);
    if (!covers(ETextPart::eDefinition))
        return;
    out.group("polygon", [&] {
        out.value("normal", polygon.normal); // of length 1; of a rectangle as long as its area
        out.value("centre", polygon.centre);
        out.value("radius", polygon.radius);
        out.value("rotation", polygon.rotation); // rad
        out.value("edges", polygon.edges);       // 4: a rectangle
        out.value("lengthSide1", polygon.lengthSide1);
        out.value("lengthSide2", polygon.lengthSide2);
        out.value("rotations", polygon.rotations); // rad, about x, y and z
    });
}

void CTextWriter::writeCADGeometry(const CCADGeometry& cad)
{
    writeGeometryGroup(cad);
    if (!covers(ETextPart::eDefinition))
        return;
    out.group("import", [&] {
        out.value("translationDistance", cad.translationDistance); // m
        out.value("rotationAngle", cad.rotationAngle);             // rad
        out.value("translationAxisStart", cad.translationAxisStart);
        out.value("translationAxisEnd", cad.translationAxisEnd);
        out.value("rotationAxisStart", cad.rotationAxisStart);
        out.value("rotationAxisEnd", cad.rotationAxisEnd);
        out.array("importedCoords", cad.importedCoords); // m, as the import came
    });
}

} // namespace NBrenmark
