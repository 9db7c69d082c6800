#pragma once
// What of a definition a document has no place for: the lines of the model's text that may change, with what is said.

namespace NBrenmark {

struct SXmlLoss
{
    const char* lines;    ///< a pattern of the paths that change
    const char* reported; ///< what the export or the import says of them
};

constexpr SXmlLoss definitionLosses[] = {
    {"velocity(Restricted|Limit)", "the limit of velocities"},
    {"angularVelocity(Restricted|Limit)", "the limit of angular velocities"},
    {"cylindricalPeriodicBoundaryConditions/.*", "its cylindrical periodic boundary conditions"},
    {"materialBlocks/.*", "its material blocks"},
    {"pluginFactories/.*", "its plug-in factories"},
    {"particles/maxId", "the greatest id of a particle so far"},
    {"particles/[^/]*/(surfaceBased|auto.*|templateName)", "how its template was made"},
    {"geometryGroups/.*#2/.*|geometryGroups/count", "another group has its name"},
    {"geometryGroups/[^/]*/(vertices|bounds|(original)?[cC]entreOfMass|enclosedM.*|surfaceM.*).*",
     "vertices with more than six significant digits"},
    {"geometryGroups/[^/]*/(original)?[pP]ointOfAction", "its point of action"},
    {"geometryGroups/[^/]*/uniqueId", "its unique id"},
    {"geometryGroups/[^/]*/materialName", "the material of what isn't real"},
    {"geometryGroups/[^/]*/momentOfInertia", "its moment of inertia"},
    {"geometryGroups/[^/]*/triangleForces.*", "forces on triangles"},
    {"geometryGroups/[^/]*/properties/.*", "values of custom properties"},
    {"geometryGroups/[^/]*/(isStatic|transform|translation)", "where it has moved to"},
    {"geometryGroups/[^/]*/(velocity|motionHistory/.*)", "its velocity"},
    {"geometryGroups/[^/]*/resetVelocities", "that its velocities aren't reset"},
    {"geometryGroups/[^/]*/electrostatic/.*", "how it takes part in charging"},
    {"geometryGroups/[^/]*/motions/(translation_for_servo_control/.*|.*/index)",
     "gets the translation for its control"},
    {"geometryGroups/[^/]*/factories/[^/]*/counters", "counters of the solver"},
    {"geometryGroups/[^/]*/factories/[^/]*/customProperties/.*", "what it gives to custom properties"},
    {"geometryGroups/[^/]*/factories/[^/]*/(massCreation|numToCreate)", "a goal that has no effect"},
    {"geometryGroups/[^/]*/factories/[^/]*/typeAccounting/.*", "the accounts of particle types"},
    {"geometryGroups/[^/]*/factories/[^/]*/type/next", "which particle type comes next"},
    {"geometryGroups/[^/]*/factories/[^/]*/position/axis.", "lattice axes that don't follow from the rotation"},
    {"geometryGroups/[^/]*/factories/[^/]*/position/cursor.", "how far it is in its lattice"},
    {"geometryGroups/[^/]*/factories/[^/]*/sizes/[^/]*/bandAccounting/.*", "the accounts of size bands"},
    {"geometryGroups/[^/]*/factories/[^/]*/sizes/[^/]*/bands", "size bands with more than six significant digits"},
    {"physicsModels/.*/Temperature%20Update/.*", "\"Temperature Update\" is no longer supported"},
    {"physicsModels/.*%20heat%20conduction/.*|physicsModels/.*/index", "heat conduction\" is no longer supported"},
    {"physicsModels/.*/enableRollingFriction", "its option of rolling friction"},
    {"physicsModels/.*/torqueFeedback", "that it gives no torque back"},
    {"physicsModels/.*/pairs/.*", "its table of pairs"},
};

} // namespace NBrenmark
