#pragma once
// From which file version to which a field is stored. Gates look downward only: a later file is
// read as if it were current. A gate that is used more than once has a name and a reason here.

#include "core/version.h"

namespace NBrenmark {

/// Up to two ranges of versions, each from its first version to below its end.
struct SGate
{
    static constexpr quint32 endless = 0xFFFFFFFFu;

    quint32 first = 0;
    quint32 end = endless;
    quint32 secondFirst = endless;
    quint32 secondEnd = endless;

    constexpr SGate below(quint32 major, quint32 minor, quint32 build) const
    {
        return endingAt(makeVersion(major, minor, build));
    }
    /// The version itself is the last of the range.
    constexpr SGate upTo(quint32 major, quint32 minor, quint32 build) const
    {
        return endingAt(makeVersion(major, minor, build) + 1);
    }
    constexpr SGate andFrom(quint32 major, quint32 minor, quint32 build) const
    {
        return SGate{first, end, makeVersion(major, minor, build), endless};
    }
    constexpr bool holds(quint32 version) const
    {
        return (version >= first && version < end) || (version >= secondFirst && version < secondEnd);
    }

private:
    constexpr SGate endingAt(quint32 version) const
    {
        return secondFirst == endless ? SGate{first, version, endless, endless}
                                      : SGate{first, end, secondFirst, version};
    }
};

constexpr SGate from(quint32 major, quint32 minor, quint32 build)
{
    return SGate{makeVersion(major, minor, build), SGate::endless, SGate::endless, SGate::endless};
}

constexpr SGate below(quint32 major, quint32 minor, quint32 build) { return SGate().below(major, minor, build); }

constexpr SGate upTo(quint32 major, quint32 minor, quint32 build) { return SGate().upTo(major, minor, build); }

/// Stored by every version.
constexpr SGate always;

// Lines 13.0 and 20.0 grew side by side: what 13.0 gained is absent again from 20.0.0 until 20.0
// gained it too.
constexpr SGate gateCharge = from(13, 0, 1).below(20, 0, 0).andFrom(20, 0, 16);
constexpr SGate gateLimits = from(13, 0, 3).below(20, 0, 0).andFrom(20, 0, 13);
constexpr SGate gateForces = from(13, 0, 3).below(20, 0, 0).andFrom(20, 0, 14);
constexpr SGate gateContactModels = from(13, 0, 6).below(20, 0, 0).andFrom(20, 0, 14);
constexpr SGate gateModelSource = from(13, 0, 8).below(20, 0, 0).andFrom(20, 0, 14);
constexpr SGate gateParticleProperties = from(13, 0, 5).below(20, 0, 0).andFrom(21, 0, 0);
constexpr SGate gateFactoryProperties = from(13, 0, 7).below(20, 0, 0).andFrom(21, 0, 1);
// The charge of new particles beside their factory, until custom properties took it over.
constexpr SGate gateFactoryCharge = from(13, 0, 1).below(20, 0, 0).andFrom(20, 0, 16).upTo(26, 0, 0);
// The charge of a geometry group was taken out after 26.0.0, and came back.
constexpr SGate gateGroupCharge = from(20, 0, 16).upTo(26, 0, 0).andFrom(27, 0, 3);
// Charges are stored beside the particles; afterwards they are custom properties alone.
constexpr SGate gateChargeRows = from(13, 0, 1).below(20, 0, 0).andFrom(20, 0, 16).upTo(26, 0, 0);
constexpr SGate gateStreamFlag = from(13, 0, 4).below(20, 0, 0).andFrom(20, 0, 16).below(22, 0, 0);

// Before, a model is a list of particle prototypes, and a timestep one prototype a particle.
constexpr SGate gateParticleTypes = from(20, 0, 0);
// Physics come before the particle types; earlier, after the prototypes.
constexpr SGate gatePhysicsInFront = from(20, 0, 14);
// Every factory has four words of its solver.
constexpr SGate gateFactoryCounters = from(20, 0, 23);
// A mesh is a few arrays; before, each triangle carries the fields of its own.
constexpr SGate gateMeshArrays = from(20, 0, 0);
// One list of motions; before, two lists of at most one come before it.
constexpr SGate gateMotionList = from(20, 0, 0);
// The whole list of motions in each timestep.
constexpr SGate gateMotionsInTimestep = from(21, 0, 4).below(24, 0, 0);
// The creator block lists the geometry; before, each timestep does.
constexpr SGate gateGeometryInCreator = from(20, 0, 10);
// Blocks with tag and size around contacts and collisions, which now nest; before, bare families.
constexpr SGate gateContactBlocks = from(20, 0, 17);
// Masks of partial saves; geometry is always in its timestep form from here on.
constexpr SGate gateMasks = from(22, 0, 0);

} // namespace NBrenmark
