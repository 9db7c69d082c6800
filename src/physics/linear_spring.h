#pragma once
// A linear spring whose stiffness follows from a characteristic velocity.

#include "physics/built_in_contact_model.h"
#include "physics/rolling_friction.h"

namespace NBrenmark {

class CLinearSpringContactModelParamData : public CParamData<CLinearSpringContactModelParamData>,
                                           public CRollingFrictionParamData
{
public:
    explicit CLinearSpringContactModelParamData(quint32 modelType)
        : CRollingFrictionParamData(modelType), modelType(modelType)
    {}
    void read(IFileVisitorReader& visitor);
    void write(IFileVisitorWriter& visitor) const;

    double characteristicVelocity = 0.0; ///< m/s
    quint32 modelType;
};

class CLinearSpringContactModel : public CContactModelWith<CLinearSpringContactModelParamData>
{
public:
    using CContactModelWith::CContactModelWith;
};

} // namespace NBrenmark
