#pragma once
// How the model of an old creator block becomes a current one, once it is read.

#include <QtGlobal>

namespace NBrenmark {

class CCreatorData;

namespace NLegacySupport {

/// Who wants to know what upgrades change. Called on the thread that reads.
class IUpgradeListener
{
public:
    virtual ~IUpgradeListener() = default;
    /// The model as its block has it. What comes with a timestep is still that of the one before.
    virtual void upgrading(CCreatorData& creator) = 0;
    virtual void upgraded(CCreatorData& creator) = 0;
};

/// Runs after every read of a legacy creator block.
/// \param fileVersion  of the block, with 3 counted as 20
/// \param listener     may be null
void upgradeCreatorData(CCreatorData& creator, quint32 fileVersion, IUpgradeListener* listener = nullptr);

} // namespace NLegacySupport
} // namespace NBrenmark
