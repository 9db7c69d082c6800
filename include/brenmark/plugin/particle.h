#pragma once
// A particle as external forces of plug-ins get it, and what they answer. Arrays are x, y, z.

namespace NBrenmark::NApiCore {
class ICustomPropertyDataApi_1_0;
}

namespace NBrenmark::NApiPbf {

struct SParticle
{
    const char* name;                                 ///< of the particle type
    double mass;                                      ///< kg
    NApiCore::ICustomPropertyDataApi_1_0* properties; ///< for this call; null if it has none, and in 1.0.0
};

/// What the forces so far have made of it, to be added to.
struct SParticleForces
{
    double force[3];  ///< N
    double torque[3]; ///< N m
};

} // namespace NBrenmark::NApiPbf
