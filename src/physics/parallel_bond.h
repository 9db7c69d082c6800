#pragma once
// Elastic beams between particles, which form in a span of time and break under load.

#include "physics/bond_parameters.h"
#include "physics/built_in_contact_model.h"
#include "physics/rolling_friction.h"

namespace NBrenmark {

/// How far the forming of bonds is.
enum EBondFormation : quint32
{
    eBondsNotBegun = 0,
    eBondsForming = 1,
    eBondsDone = 2
};

class CParallelBondContactModelParamData : public CParamData<CParallelBondContactModelParamData>,
                                           public CRollingFrictionParamData
{
public:
    explicit CParallelBondContactModelParamData(quint32 modelType) : CRollingFrictionParamData(modelType) {}
    void read(IFileVisitorReader& visitor);
    void write(IFileVisitorWriter& visitor) const;

    double formationStartTime = 0.0; ///< s
    double formationEndTime = 0.0;   ///< s
    CBondParametersMap bondParameters;
    quint32 state = eBondsNotBegun; ///< EBondFormation
    bool torqueFeedback = true;
};

class CParallelBondContactModel : public CContactModelWith<CParallelBondContactModelParamData>
{
public:
    using CContactModelWith::CContactModelWith;
    void reset() override { parameters.bondParameters.clear(); }
    void materialRenamed(const std::string& oldName, const std::string& newName) override
    {
        parameters.bondParameters.rename(oldName, newName);
    }
};

} // namespace NBrenmark
