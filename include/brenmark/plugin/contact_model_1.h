#pragma once
// Contact models of the interface versions 1.0.0 and 1.1.0: exported functions, which get everything by pointers. A
// library exports functions of these types by these names:
//
//   GETCMINTERFACEVERSION        GetInterfaceVersion         interfaceVersion(1, 0, 0) or (1, 1, 0)
//   CALCULATEFORCE               CalculateForce
//   GETCMPREFERENCEFILE          GetPaddedFileName           may be missing
//   REGISTERNEWPARTICLEPROPERTY  RegisterParticleProperty    from 1.1.0 on, like the two below
//   GETNUMBEROFREQUIREDPROPERTIES  GetNumberOfProperties
//   GETDETAILSFORPROPERTY        GetDetailsForProperty

#include <brenmark/plugin/contact.h>
#include <brenmark/plugin/custom_properties.h>
#include <brenmark/plugin/exports.h>

namespace NBrenmark::NApiCm {

/// Adds a model's part to the forces of a contact.
/// \param preferenceFile  path; empty without one
/// \param time            s; timeStep as well
/// \return 0, or the number of an error, at which the host stops: 1 for a preference file that can't be found
using CalculateForce = int (*)(const char* preferenceFile, const double* time, const double* timeStep,
                               SContact* contact, SContactForces* forces);
constexpr int noPreferenceFile = 1;

} // namespace NBrenmark::NApiCm
