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

    /// Elastic spheres, damped so that they part at the restitution, which stick until friction is exceeded.
    ///
    ///     Fn = (4/3) E* sqrt(R*) d^(3/2) + 2 sqrt(5/6) beta sqrt(Sn m*) vn
    ///     Ft = -min(St o, mu_s Fn) - 2 sqrt(5/6) beta sqrt(St m*) vt
    ///     T  = -mu_r Fn |r| omega / |omega|
    ///
    /// d: normal overlap; o: tangential overlap; vn, vt: relative velocity; Sn, St: normal and tangential stiffness. Friction
    /// goes by the elastic part of Fn. H. Hertz (1882); R. D. Mindlin, H. Deresiewicz (1953); Y. Tsuji et al. (1992);
    /// rolling friction after H. Sakaguchi et al. (1993).
    bool calculateForce(SContact& contact) override;
};

} // namespace NBrenmark
