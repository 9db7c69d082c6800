// The text of geometry groups: meshes as stored, nothing that follows from them.
#include "model/geometry_groups.h"
#include "io/text/held_by_property.h"
#include "io/text/text_writer.h"
#include "model/factories/particle_factory_list.h"
#include "model/geometry/geometry_group.h"

#include <algorithm>

namespace NBrenmark {

void CTextWriter::writeGeometryGroups(const GeometryGroups& groups)
{
    if (covers(ETextPart::eDefinition))
        out.value("count", groups.count());
    CListSegments segments;
    for (const CGeometryGroup* group : groups.groups()) {
        if (group == nullptr)
            continue;
        out.group(segments.next(group->displayedName), [&] {
            if (covers(ETextPart::eDefinition)) {
                out.value("index", group->index);
                out.value("shape", group->typeName());
            }
            group->write(*this);
        });
    }
}

/// The mesh as it was made: where a moving group is now follows from it and the transform.
static void groupDefinition(CTextOutput& out, const CGeometryGroup& g)
{
    out.value("name", g.displayedName);
    out.value("uniqueId", g.uniqueId);
    out.value("materialName", g.materialName);
    out.value("geometryType", g.geometryType); // 1 real, 2 virtual; a file may hold others
    out.value("closed", g.closed);
    out.value("desiredForce", g.desiredForce); // N
    out.value("gain", g.gain);
    out.array("vertices", g.isStatic ? g.coords : g.originalCoords); // m
    out.array("vertexIds", g.vertexIds);
    out.array("triangleIds", g.triangleIds);
    out.array("triangleNodes", g.triangleNodes); // rows of the vertices; their order gives the normal
}

/// Where a group is and how it moves. A timestep stores it of a moving group alone.
static void groupMotion(CTextOutput& out, const CGeometryGroup& g)
{
    out.value("transform", g.transform);
    out.value("translation", g.translation); // m
    out.value("velocity", g.velocity);       // m/s
    out.value("resetVelocities", g.resetVelocities);
    out.value("centreOfMass", g.centreOfMass);                   // m
    out.value("originalCentreOfMass", g.originalCentreOfMass);   // m, before it moved
    out.value("pointOfAction", g.pointOfAction);                 // m
    out.value("originalPointOfAction", g.originalPointOfAction); // m, before it moved
}

static void triangleState(CTextOutput& out, const CGeometryGroup& g)
{
    out.array("triangleForces", g.triangleForces); // N, N m, N

    // Old decks store charges beside the triangles. They live on as a custom property; those that didn't find one are
    // shown here.
    const std::vector<double>& charges = g.electrostatic.charges;
    const bool anyCharge = std::any_of(charges.begin(), charges.end(), [](double charge) { return charge != 0.0; });
    if (anyCharge && !heldByProperty(g.customProperties, "Charge", charges))
        out.array("charges", charges); // C
}

void CTextWriter::writeGeometryGroup(const CGeometryGroup& g)
{
    if (covers(ETextPart::eDefinition)) {
        groupDefinition(out, g);
        out.group("momentOfInertia", [&] { g.momentOfInertia.write(*this); });
        out.group("electrostatic", [&] { g.electrostatic.write(*this); });
        if (g.materialBlockRef != nullptr)
            out.group("block", [&] { g.materialBlockRef->write(*this); });
        // In a timestep they follow from the mesh and its place.
        out.group("bounds", [&] { g.bounds.write(*this); });
        out.value("enclosedMagnitude", g.enclosedMagnitude); // m^3
        out.value("surfaceMagnitude", g.surfaceMagnitude);   // m^2
    }
    if (covers(ETextPart::eState)) {
        out.stored("dataMask", g.dataMask);
        out.value("isStatic", g.isStatic);
        out.value("time", g.time); // s
    }
    if (covers(ETextPart::eState) && (covers(ETextPart::eDefinition) || !g.isStatic)) {
        groupMotion(out, g);
        out.group("motionHistory", [&] { g.motionHistory.write(*this); });
    }
    if (covers(ETextPart::eState)) {
        triangleState(out, g);
        g.customProperties.write(*this);
    }
    out.group("motions", [&] { g.kinematics.write(*this); });
    out.group("factories", [&] { g.factories->write(*this); });
}

void CTextWriter::writeMomentOfInertia(const CMomentOfInertia& moment)
{
    out.arrayHere(std::vector<double>(moment.values.begin(), moment.values.end()), moment.values.size(), 1);
}

void CTextWriter::writeGeometryGroupElectrostatic(const CGeometryGroupElectrostatic& electrostatic)
{
    out.value("exempt", electrostatic.exempt);
    out.value("startCharge", electrostatic.startCharge); // C
}

void CTextWriter::writeBlockLink(const CBlockLink& link) { out.value("blockName", link.blockName); }

void CTextWriter::writeAngVelAndPosList(const AngVelAndPosList& list)
{
    for (size_t i = 0; i < list.size(); ++i)
        out.group(std::to_string(i), [&] { list[i].write(*this); });
}

void CTextWriter::writeAngVelAndPos(const CAngVelAndPos& rotation)
{
    out.value("angularVelocity", rotation.angularVelocity); // rad/s
    out.value("pointOfAction", rotation.pointOfAction);     // m
}

} // namespace NBrenmark
