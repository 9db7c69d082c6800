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

    /// Beams between particles beside the contact of CHertzMindlinNoSlipContactModel. A beam of radius Rb adds up
    ///
    ///     dFn = -vn dt kn A,   dFt = -vt dt ks A,   dMn = -ks J theta_n,   dMt = -kn I theta_t
    ///
    /// A = pi Rb^2, J = pi Rb^4 / 2, I = J / 2, theta = (omega1 - omega2) dt; and breaks when
    ///
    ///     | |Mt| Rb / I - |Fn| / A | > normal strength  or  |Mn| Rb / J + |Ft| / A > shear strength
    ///
    /// D. O. Potyondy, P. A. Cundall (2004).
    bool calculateForce(SContact& contact) override;
    void reset() override { parameters.bondParameters.clear(); }
    void materialRenamed(const std::string& oldName, const std::string& newName) override
    {
        parameters.bondParameters.rename(oldName, newName);
    }

private:
    bool bondsForm(const SContact& contact, bool& areSought);
};

} // namespace NBrenmark
