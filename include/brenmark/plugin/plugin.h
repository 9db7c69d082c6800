#pragma once
// What plug-in libraries of all kinds share: how they export functions, how interface versions are packed, the sizes of
// the buffers that the host hands out. Headers for plug-ins need the C++ standard library alone.
//
// All values are SI. No text that a plug-in gets or gives is longer than its buffer, the NUL at its end included.
// Nothing that the host hands out is kept beyond the call unless its description says so. An exception that leaves a
// plug-in counts as a failure of the call.

#if defined(_WIN32)
#define BRENMARK_PLUGIN_EXPORT extern "C" __declspec(dllexport)
#else
#define BRENMARK_PLUGIN_EXPORT extern "C" __attribute__((visibility("default")))
#endif

namespace NBrenmark::NApiCore {

/// Packs an interface version, which a library returns from its version export. The host binds exact matches alone.
constexpr unsigned int interfaceVersion(unsigned int major, unsigned int minor, unsigned int patch)
{
    return (major << 16) | (minor << 8) | patch;
}

// Sizes of buffers, in characters or values.
constexpr unsigned int paddedFileNameSize = 128; ///< of the exports of generation 1: blanks, and no NUL
constexpr unsigned int fileNameSize = 1024;
constexpr unsigned int errorTextSize = 1024;
constexpr unsigned int propertyNameSize = 1024;
constexpr unsigned int mostElements = 256; ///< of a custom property; initial values have room for as many

/// Whose custom properties.
enum EOwnerType : unsigned int
{
    eParticles = 0,
    eContacts = 1,
    eGeometry = 2,
    eSimulation = 3
};

enum EDataType : unsigned int
{
    eDouble = 0,
    eBoolean = 1 ///< 0.0 or 1.0
};

/// The quantity of a custom property, by which values are shown in the user's units.
enum EUnitType : unsigned int
{
    eOther = 0,
    ePlainNumber = 1,
    eAcceleration = 2,
    eAngle = 3,
    eAngularAcceleration = 4,
    eAngularVelocity = 5,
    eDensity = 6,
    eEnergy = 7,
    eWorkFunction = 8,
    eForce = 9,
    eCharge = 10,
    eLength = 11,
    eMass = 12,
    eMomentOfInertia = 13,
    eShearModulus = 14,
    eTime = 15,
    eTorque = 16,
    eVelocity = 17,
    eVolume = 18,
    eFrequency = 19,
    eTemperature = 20,
    eHeatFlux = 21,
    eStiffness = 22,
    eStress = 23,
    eMassFlow = 24,
    eStiffnessPerUnitArea = 25,
    eEnergyDensity = 26,
    eSurfaceEnergy = 27,
    ePressure = 28,
    eWearConstant = 29
};

/// What the work calls of generation 2 answer.
enum EResult : int
{
    eOk = 0,
    eRecoverable = 1, ///< the host goes on
    eFatal = 2        ///< the host stops
};

} // namespace NBrenmark::NApiCore
