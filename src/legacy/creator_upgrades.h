#pragma once
// How the model of an old creator block becomes today's, once it is read.

#include <QtGlobal>

namespace NBrenmark {

class CCreatorData;

namespace NLegacySupport {

/// Runs behind every read of a legacy creator block.
/// \param fileVersion  of the block, old numbering mended
void upgradeCreatorData(CCreatorData& creator, quint32 fileVersion);

} // namespace NLegacySupport
} // namespace NBrenmark
