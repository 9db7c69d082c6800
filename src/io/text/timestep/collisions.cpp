// The text of collision records, by the arrays that their family has.
#include "results/collisions.h"
#include "io/text/text_writer.h"

namespace NBrenmark {

void CTextWriter::writeCollisions(const CCollisions& collisions)
{
    out.group("surfaceSurface", [&] { collisions.surfaceSurface.write(*this); });
    out.group("surfaceGeometry", [&] { collisions.surfaceGeometry.write(*this); });
}

static void writeEnd(CTextOutput& out, const char* name, const SCollisionEnd& end, quint32 fields)
{
    const auto array = [&](quint32 field, const char* arrayName, const auto& values) {
        if ((fields & field) != 0)
            out.array(arrayName, values);
    };
    out.group(name, [&] {
        array(eEndIds, "ids", end.ids);
        array(eEndVelocity, "velocity", end.velocity);
        array(eEndPosition, "position", end.position);
        array(eEndRadius, "radius", end.radius);
        array(eEndAngularVelocity, "angularVelocity", end.angularVelocity);
        array(eEndOrientation, "orientation", end.orientation);
    });
}

void CTextWriter::writeCollisionsBase(const CCollisionsBase& c)
{
    out.value("records", c.recordCount());
    out.array("ids", c.ids);             // 0: no collision
    out.array("startTime", c.startTime); // s
    out.array("position", c.position);
    out.array("unitCpVector", c.unitCpVector); // of length 1
    out.array("relativeVelocity", c.relativeVelocity);
    writeEnd(out, "first", c.first, c.mask);
    writeEnd(out, "second", c.second, c.mask >> secondEndShift);
    out.array("maxNormalForce", c.maxNormalForce);
    out.array("maxTangentialForce", c.maxTangentialForce);
    out.array("iterations", c.iterations);     // time steps
    out.array("normalEnergy", c.normalEnergy); // J
    out.array("shearEnergy", c.shearEnergy);   // J
    out.array("totalNormalForce", c.totalNormalForce);
    out.array("totalTangentialForce", c.totalTangentialForce);
    out.array("endTime", c.endTime); // s
}

} // namespace NBrenmark
