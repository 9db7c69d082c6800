#pragma once
// Particle factories of the interface version 1.0.0. A library exports functions of these types by these names:
//
//   GETFACTINTERFACEVERSION  GetInterfaceVersion    interfaceVersion(1, 0, 0)
//   CREATEPARTICLE           CreateParticle
//   GETFACTPREFERENCEFILE    GetPaddedFileName      may be missing

#include <brenmark/plugin/exports.h>
#include <brenmark/plugin/new_particle.h>

namespace NBrenmark::NApiFactory {

/// Says whether a particle is to be created now, and which.
/// \param preferenceFile  path; empty without one
/// \param time            s
/// \param created         set to 1 if there is one, to 0 otherwise
/// \return 0, or the number of an error, at which the host stops: 1 for a preference file that can't be found
using CreateParticle = int (*)(const char* preferenceFile, const double* time, SNewParticle* particle, int* created);
constexpr int noPreferenceFile = 1;

} // namespace NBrenmark::NApiFactory
