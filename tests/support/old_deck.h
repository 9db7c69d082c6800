#pragma once
// The smallest deck with one of everything, byte by byte for any file version below 20.0.16: two particles of one
// template (ids 1 and 2, the second twice as large), a cylinder and a polygon with one triangle and one factory each, one
// contact, collision and bond of particle 2 with particle 1. Nothing here knows the library's own forms.

#include "support/bytes.h"

namespace NBrenmark {

/// The versions below 20.0.16 from which on something is stored otherwise, in order.
extern const std::vector<quint32> oldVersions;

/// The geometry alone.
CBytes oldGroupBytes(quint32 version);
/// After the name of a creator block.
CBytes oldCreatorBytes(quint32 version);
/// After the creator pair of a timestep block.
CBytes oldTimestepBytes(quint32 version);
/// Writes NAME.dem and NAME.idx of a deck with that model and two such timesteps. \return the path of NAME.dem
QString writeOldDeck(quint32 version, const QString& folder, const QString& name);

} // namespace NBrenmark
