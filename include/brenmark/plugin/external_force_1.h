#pragma once
// External forces of the interface versions 1.0.0 and 1.1.0. A library exports functions of these types by these names:
//
//   GETEFINTERFACEVERSION        GetInterfaceVersion         interfaceVersion(1, 0, 0) or (1, 1, 0)
//   EXTERNALFORCE                ExternalForce
//   GETEFPREFERENCEFILE          GetPaddedFileName           may be missing
//   REGISTERNEWPARTICLEPROPERTY  RegisterParticleProperty    from 1.1.0 on, like the two below
//   GETNUMBEROFREQUIREDPROPERTIES  GetNumberOfProperties
//   GETDETAILSFORPROPERTY        GetDetailsForProperty

#include <brenmark/plugin/custom_properties.h>
#include <brenmark/plugin/exports.h>
#include <brenmark/plugin/particle.h>

namespace NBrenmark::NApiPbf {

/// Adds to what acts on a particle.
/// \param preferenceFile  path; empty without one
/// \param timeStep        s
/// \return 0, or the number of an error, at which the host stops: 1 for a preference file that can't be found
using ExternalForce = int (*)(const char* preferenceFile, const double* timeStep, const SParticle* particle,
                              SParticleForces* forces);
constexpr int noPreferenceFile = 1;

} // namespace NBrenmark::NApiPbf
