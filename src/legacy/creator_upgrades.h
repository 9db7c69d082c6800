#pragma once
// How the model of an old creator block becomes a current one, once it is read.

#include <QtGlobal>

namespace NBrenmark {

class CCreatorData;

namespace NLegacySupport {

/// Runs after every read of a legacy creator block.
/// \param fileVersion  of the block, with 3 counted as 20
void upgradeCreatorData(CCreatorData& creator, quint32 fileVersion);

} // namespace NLegacySupport
} // namespace NBrenmark
