#pragma once
// A particle as factories of plug-ins ask for it. Arrays are x, y, z, a quaternion w, x, y, z.

#include <brenmark/plugin/plugin.h>

namespace NBrenmark::NApiFactory {

constexpr unsigned int typeNameSize = 1024;

/// The host hands it out with a scale of 1, no rotation and zeros.
struct SNewParticle
{
    char typeName[typeNameSize]; ///< NUL-terminated; a type that isn't there is an error
    double scale;                ///< of the type's spheres
    double position[3];          ///< m
    double velocity[3];          ///< m/s
    double angularVelocity[3];   ///< rad/s
    double orientation[4];
};

} // namespace NBrenmark::NApiFactory
