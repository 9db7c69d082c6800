#pragma once
// What changed in the files of a deck, version by version. A row is a version at which a reader takes another way; no other
// has one. The checks of the build find a gate without its row.

#include "core/version.h"

namespace NBrenmark {

struct SFileVersion
{
    quint32 version;
    const char* change; ///< what files of this version have that earlier ones don't
};

constexpr SFileVersion fileVersions[] = {
    // The first line: particles are prototypes, geometry is a list of triangles in each timestep.
    {makeVersion(2, 0, 0), "The first decks."},
    {makeVersion(2, 4, 1), "Timesteps list the plug-in factories."},
    {makeVersion(2, 4, 2), "Triangles have corners."},
    {makeVersion(2, 4, 3), "Spheres have a physical radius beside the one of contact."},
    {makeVersion(2, 4, 4), "Geometry groups have a time."},
    {makeVersion(2, 4, 5), "Geometry groups have shapes."},
    {makeVersion(2, 4, 7), "The name of a geometry group comes before its mesh."},
    {makeVersion(2, 4, 8), "Decks have a description."},
    {makeVersion(2, 4, 9), "Axes have an angle."},
    {makeVersion(2, 4, 12), "Geometry groups have a number that nothing uses, until 2.4.31."},
    {makeVersion(2, 4, 15), "Cylinders have two radii."},
    {makeVersion(2, 4, 16), "The header has four reserved words, and the model loses two numbers of its damping."},
    {makeVersion(2, 4, 17), "Axes lose one of two numbers that nothing uses."},
    {makeVersion(2, 4, 18), "Prototypes say whether they have a domain."},
    {makeVersion(2, 4, 19), "The kind of damping is gone; timesteps have a word before their particles."},
    {makeVersion(2, 4, 20), "Dynamic factories have a number of attempts."},
    {makeVersion(2, 4, 21), "Random walks and lattices of factories have parameters of their own."},
    {makeVersion(2, 4, 22), "Normally distributed velocities have a direction, random positions a seed."},
    {makeVersion(2, 4, 26), "Polygons are given by centre, sides and rotations."},
    {makeVersion(2, 4, 27), "Every factory has a number of attempts."},
    {makeVersion(2, 4, 28), "Size distributions are capped."},
    {makeVersion(2, 4, 29), "Particles have an external force."},
    {makeVersion(2, 4, 30), "Timesteps have potential and kinetic energy."},
    {makeVersion(2, 4, 31), "Geometry groups have a desired force and a gain, random walks a length."},
    {makeVersion(2, 4, 32), "Timesteps have a balance of energy."},
    {makeVersion(2, 4, 33), "Random positions have a separation."},
    {makeVersion(2, 4, 34), "Geometry groups say once more whether velocities are reset."},
    {makeVersion(2, 4, 35), "The header has the edition."},
    {makeVersion(2, 4, 36), "Timesteps have a word after their energies, until 2.4.38."},
    {makeVersion(2, 4, 37), "Collisions are objects."},
    {makeVersion(2, 4, 38), "Timesteps count removed particles."},
    {makeVersion(2, 4, 39), "Models have materials and interactions."},
    {makeVersion(2, 4, 40), "Motions have a name."},
    {makeVersion(2, 4, 41), "Particles have a vector that nothing uses; contacts are stored twice, until 2.4.57."},
    {makeVersion(2, 4, 48), "Contacts have a word that nothing uses."},
    {makeVersion(2, 4, 49), "Log-normal sizes say whether they scale the radius."},
    {makeVersion(2, 4, 50), "Static factories have a goal of their own."},
    {makeVersion(2, 4, 51), "Blocks have words about the program that wrote them."},
    {makeVersion(2, 4, 52), "Contacts have the forces of their models; factories have masses."},
    {makeVersion(2, 4, 53), "Particles have a number that nothing uses."},
    {makeVersion(2, 4, 54), "Prototypes have a domain."},
    {makeVersion(2, 4, 55), "The balance of energy has what capping took."},
    {makeVersion(2, 4, 56), "Particles have one more axis."},
    {makeVersion(2, 4, 57), "Contacts are stored once."},
    {makeVersion(2, 4, 58), "The header has the version that wrote last: from here on it has eight words."},
    {makeVersion(2, 4, 59), "Geometry groups have a centre of mass."},

    // The line 13.0 grew beside 20.0: what it gained is absent again from 20.0.0 until 20.0 gained it too.
    {makeVersion(13, 0, 1), "Charges, work functions and electrostatics."},
    {makeVersion(13, 0, 2), "Triangles lose a vector that they had at 13.0.1."},
    {makeVersion(13, 0, 3), "Limits of velocity and external forces; the names of a pair are one text."},
    {makeVersion(13, 0, 4), "A model says whether its timesteps have charges."},
    {makeVersion(13, 0, 5), "Custom properties of particles."},
    {makeVersion(13, 0, 6), "Lists of contact models."},
    {makeVersion(13, 0, 7), "Custom properties of factories."},
    {makeVersion(13, 0, 8), "Models say whether they are built in."},
    {makeVersion(13, 0, 9), "Timesteps have bonds."},

    // The line that led here: arrays in place of objects. A version of major number 3 counts as one of 20.
    {makeVersion(20, 0, 0), "Particle types with arrays of particles, meshes of arrays, one list of motions."},
    {makeVersion(20, 0, 1), "Arrays of particles may be deflated."},
    {makeVersion(20, 0, 2), "Contacts are back, as arrays."},
    {makeVersion(20, 0, 3), "Counts come before the arrays of a mesh, which may be deflated."},
    {makeVersion(20, 0, 4), "Types say whether their properties were computed."},
    {makeVersion(20, 0, 6), "Types and contacts have a word of stored fields."},
    {makeVersion(20, 0, 7), "Orientations are quaternions; old collisions are gone."},
    {makeVersion(20, 0, 9), "Contacts have their normal force once."},
    {makeVersion(20, 0, 10), "Models list the geometry; timesteps have its state."},
    {makeVersion(20, 0, 12), "Timesteps have the state of factories."},
    {makeVersion(20, 0, 13), "Limits of velocity."},
    {makeVersion(20, 0, 14), "Physics come before the particle types, with external forces and lists of models."},
    {makeVersion(20, 0, 15), "Timesteps have no triangles for a while."},
    {makeVersion(20, 0, 16), "Charges and work functions; geometry has a word of stored fields."},
    {makeVersion(20, 0, 17), "Contacts and collisions are blocks and nest."},
    {makeVersion(20, 0, 18), "Blocks have revision and branch of the program."},
    {makeVersion(20, 0, 19), "Timesteps have the velocity of moving geometry."},
    {makeVersion(20, 0, 21), "Timesteps have a time for each geometry group."},
    {makeVersion(20, 0, 22), "The index has offsets of 64 bits."},
    {makeVersion(20, 0, 23), "Factories have the words of their solver."},
    {makeVersion(21, 0, 0), "Custom properties of particles."},
    {makeVersion(21, 0, 1), "Custom properties of factories."},
    {makeVersion(21, 0, 2), "Timesteps have bonds."},
    {makeVersion(21, 0, 3), "Blocks lose a word about the program."},
    {makeVersion(21, 0, 4), "Timesteps have all motions, until 24.0.0."},
    {makeVersion(22, 0, 0), "Masks of partial saves, in timesteps and in the index."},
    {makeVersion(22, 0, 1), "Factories go by mass and keep accounts."},
    {makeVersion(22, 0, 2), "Static factories go by mass; dynamic ones have a time of their last change of rate."},
    {makeVersion(22, 1, 1), "Custom properties of contacts."},
    {makeVersion(23, 0, 0), "Custom properties of geometry and of the simulation, with values for each element."},
    {makeVersion(23, 0, 1), "Imports say where they were put."},
    {makeVersion(23, 0, 3), "Colour charts have digits."},
    {makeVersion(23, 0, 4), "Imports are stored as they came."},
    {makeVersion(23, 1, 0), "Timesteps have the velocity of rotations."},
    {makeVersion(24, 0, 0), "Timesteps have the state of motions alone. A build after it wrote decks for no one else."},
    {makeVersion(24, 0, 21), "Particles whose shape is a mesh have bare meshes, and a material."},
    {makeVersion(24, 0, 25), "Decks for no one else are marked in the header."},
    {makeVersion(24, 0, 28), "Factories alternate between any number of types."},
    {makeVersion(24, 0, 29), "Timesteps have the centre of mass of geometry."},
    {makeVersion(24, 0, 30), "Geometry groups have a unique id."},
    {makeVersion(24, 0, 32), "Colour charts have a colour of their text."},
    {makeVersion(25, 0, 0),
     "The centre of mass as it was made; properties of factories start at their initial values."},
    {makeVersion(25, 0, 1), "Fixed values of factories' properties, one for each element."},
    {makeVersion(25, 0, 2), "Points of action of geometry."},
    {makeVersion(25, 0, 3), "Geometry is shifted."},
    {makeVersion(25, 0, 4), "Selections have turned boxes, in the first edition."},
    {makeVersion(26, 0, 0), "The last with charges beside particles, factories and geometry."},
    {makeVersion(27, 0, 0), "Sizes scale radius or volume; selections have colours."},
    {makeVersion(27, 0, 1), "Moving planes have names."},
    {makeVersion(27, 0, 2), "The settings file has the edition."},
    {makeVersion(27, 0, 3), "Charges of geometry are back."},

    // HDF5 takes the place of the legacy family.
    {makeVersion(30, 0, 0), "HDF5; sizes of a factory for each type; applications choose the time step themselves."},
    {makeVersion(30, 0, 1), "Motions are named Kinematics, not Dynamics."},
    {makeVersion(30, 0, 2), "Colour scales have all of their colours and are smooth."},
    {makeVersion(30, 0, 3), "Colour charts have the levels of their scale."},
    {makeVersion(30, 0, 4), "Materials are for particles or for geometry."},
    {makeVersion(30, 0, 5), "Plug-in factories belong to the model."},
    {makeVersion(30, 0, 6), "Particle types have templates."},
    {makeVersion(30, 0, 7), "Bonds may feed their torque back."},
    {makeVersion(30, 0, 8), "Motions have names and loops."},
    {makeVersion(30, 0, 9), "Timesteps have the displacement of sinusoids."},
    {makeVersion(30, 0, 10), "Sinusoids have a magnitude and a starting point."},
    {makeVersion(30, 0, 11), "The shift of an import has no sign; parts of particles have moments of inertia."},
    {makeVersion(30, 0, 12), "Geometry has types beyond real and virtual."},
    {makeVersion(30, 0, 14), "Selections have opacity."},
    {makeVersion(30, 0, 15), "Selections have turned boxes, in the other editions."},
    {makeVersion(30, 0, 16), "Material blocks."},
    {makeVersion(30, 0, 17), "Domains are attributes; cylindrical periodic boundaries."},
    {makeVersion(30, 0, 18),
     "The pairs of bonds are named in one way; some names of queries and selections mean nothing."},
    {makeVersion(30, 0, 19), "Densities have kinds."},
    {makeVersion(30, 0, 20), "Models have an option for rolling friction."},
};

/// Versions that are compared with outside of the forms, by what they brought.
namespace NFileVersion {

constexpr quint32 first = makeVersion(2, 0, 0);
constexpr quint32 reservedWords = makeVersion(2, 4, 16);
constexpr quint32 withEdition = makeVersion(2, 4, 35);
constexpr quint32 fullHeader = makeVersion(2, 4, 58);
constexpr quint32 longOffsets = makeVersion(20, 0, 22);
constexpr quint32 masks = makeVersion(22, 0, 0);
constexpr quint32 lastBeforeMark = makeVersion(24, 0, 0); ///< afterwards a build wrote decks for no one else
constexpr quint32 mark = makeVersion(24, 0, 25);          ///< which from here on are marked
constexpr quint32 settingsWithEdition = makeVersion(27, 0, 2);
constexpr quint32 hdf5 = makeVersion(30, 0, 0);
constexpr quint32 materialKinds = makeVersion(30, 0, 4);

} // namespace NFileVersion

} // namespace NBrenmark
