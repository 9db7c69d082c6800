#pragma once
// The default contact model of both chains.

#include "physics/built_in_contact_model.h"
#include "physics/rolling_friction.h"

namespace NBrenmark {

class CHertzMindlinNoSlipContactModelParamData : public CParamData<CHertzMindlinNoSlipContactModelParamData>,
                                                 public CRollingFrictionParamData
{
public:
    explicit CHertzMindlinNoSlipContactModelParamData(quint32 modelType)
        : CRollingFrictionParamData(modelType), modelType(modelType)
    {}
    void read(IFileVisitorReader& visitor);
    void write(IFileVisitorWriter& visitor) const;

    quint32 modelType;
};

class CHertzMindlinNoSlipContactModel : public CContactModelWith<CHertzMindlinNoSlipContactModelParamData>
{
public:
    static constexpr QLatin1String registeredName{"Hertz-Mindlin (no slip)", 23};

    using CContactModelWith::CContactModelWith;
};

} // namespace NBrenmark
