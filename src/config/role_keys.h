#pragma once
// The keys of the three roles. A conversion knows them by name, kind and default alone: what they mean to an
// application is up to the application.

#include "config/key_set.h"

#include <QtGlobal>

namespace NBrenmark {

/// Below "CREATOR".
NConfig::SKeySet creatorKeys();
/// The views that a role keeps, below the role's key.
NConfig::SKeySet viewKeys();
/// Below "PROCESSOR", without what a timestep holds. \param fileVersion  of the file that was read last
NConfig::SKeySet processorKeys(quint32 fileVersion);
/// Below "ANALYST": its own keys; then those of its parts, in the order in which they are loaded.
NConfig::SKeySet analystKeys();
NConfig::SKeySet analystParts();

/// Which rows and columns a timestep of the application holds, as masks of SSaveOptions.
struct SSelectiveSave
{
    quint32 timestepMask;
    quint32 particleMask;
    quint32 geometryMask;
};

/// A key below "PROCESSOR" and the bit that it stands for.
struct SSelectiveSaveKey
{
    const char* key;
    quint32 SSelectiveSave::*mask;
    quint32 bit;
};

extern const SSelectiveSave defaultSelectiveSave;
const std::vector<SSelectiveSaveKey>& selectiveSaveKeys();

} // namespace NBrenmark
