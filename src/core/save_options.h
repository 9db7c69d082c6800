#pragma once
// What one read or write moves. A stream keeps a copy while it works.

#include <QString>

namespace NBrenmark {

namespace NLegacySupport {
class IOldRecordListener;
class IUpgradeListener;
} // namespace NLegacySupport

/// Bits of SSaveOptions::timestepMask: which rows a timestep holds.
enum ETimestepMask : quint32
{
    eParticleRows = 1u << 0,
    eTriangleRows = 1u << 1,
    eSurfaceSurfaceContacts = 1u << 2,
    eSurfaceGeometryContacts = 1u << 3,
    eSurfaceSurfaceCollisions = 1u << 4,
    eSurfaceGeometryCollisions = 1u << 5,
    eBondRows = 1u << 6,
    eContactProperties = 1u << 7
};

/// Bits of SSaveOptions::particleMask. Bit 0 is set by default and never tested.
enum EParticleMask : quint32
{
    eParticleVelocity = 1u << 1,
    eParticleAngularVelocity = 1u << 2,
    eParticleForces = 1u << 3,
    eParticleProperties = 1u << 5
};

/// Bits of SSaveOptions::geometryMask. Bit 0 is set by default and never tested.
enum EGeometryMask : quint32
{
    eGeometryForces = 1u << 3,
    eGeometryProperties = 1u << 5
};

constexpr quint32 defaultTimestepMask = 255;
constexpr quint32 defaultParticleMask = 47;
constexpr quint32 defaultGeometryMask = 41;

/// Of a timestep that is read for less than all that it holds.
enum EReadExtent
{
    eReadWhole,
    eReadParticles ///< the particles of each type, and the time where the family is HDF5; nothing else is there
};

struct SSaveOptions
{
    bool fullSave = true; ///< the timestep written now is a full one
    quint32 timestepMask = defaultTimestepMask;
    quint32 particleMask = defaultParticleMask;
    quint32 geometryMask = defaultGeometryMask;
    bool legacyCreatorFlag = true;       ///< takes legacyStreamFlag of the creator block being read
    bool overrideTime = false;           ///< the next timestep's time is timeOverride, for one write
    double timeOverride = 0.0;           ///< s
    bool writeCustomProperties = true;   ///< the writer of a timestep stores custom properties
    bool useNullPropertyManager = false; ///< reading: new geometry groups get the null property manager
    bool upgradeOldModels = true;        ///< reading: a legacy model is upgraded to the current model
    EReadExtent extent = eReadWhole;     ///< reading: how far into a timestep
    quint32 wantedParticleFields = ~0u;  ///< reading: EParticleField; other arrays may be left in the file
    quint32 wantedContactFields = ~0u;   ///< reading: EContactField; arrays that are left in the file are zeros
    bool isInOrder = false;              ///< reading: after a timestep the next one is read for certain
    bool upgradeWithGeometry = false;    ///< reading: not before the geometry has come with a timestep
    bool isReadAgain = false;            ///< reading: what is to be said of this block was said
    bool examine = false; ///< reading: damage costs the group that it is in alone, and what isn't read is reported
    NLegacySupport::IOldRecordListener* oldRecords = nullptr; ///< reading: hears of each of them; not owned
    NLegacySupport::IUpgradeListener* upgrades = nullptr;     ///< reading: sees what they change; not owned
    bool reserved = false;
    QString note;
};

} // namespace NBrenmark
