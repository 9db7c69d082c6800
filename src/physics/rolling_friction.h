#pragma once
// The option of many parameter records whether the second element of a contact gets a rolling
// friction torque.

#include "physics/model_kinds.h"

namespace NBrenmark {

class CRollingFrictionParamData
{
public:
    /// Set between spheres, not set at geometry.
    explicit CRollingFrictionParamData(quint32 modelType) : enableRollingFriction(modelType == eSphereSphereModel) {}
    virtual ~CRollingFrictionParamData() = default;
    virtual bool hasRollingFrictionOption() const { return true; }

    bool enableRollingFriction;

protected:
    CRollingFrictionParamData(const CRollingFrictionParamData&) = default;
    CRollingFrictionParamData& operator=(const CRollingFrictionParamData&) = default;
};

} // namespace NBrenmark
