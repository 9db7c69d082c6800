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

    /// A spring of one stiffness along and across the normal, damped so that spheres part at the restitution:
    ///
    ///     K  = (16/15) sqrt(R*) E' (15 m* V^2 / (16 sqrt(R*) E'))^(1/5)
    ///     Fn = K d + C vn,  C = sqrt(4 m* K / (1 + (pi / ln e)^2))
    ///     Ft = -min(K o, mu_s K d), damped along o by C |vt|
    ///
    /// K stores the energy of an elastic impact at the characteristic velocity V. P. A. Cundall, O. D. L. Strack (1979).
    bool calculateForce(SContact& contact) override;
};

} // namespace NBrenmark
