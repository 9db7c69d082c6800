#pragma once
// The default contact model with a rolling friction that depends on the relative velocity.

#include "physics/built_in_contact_model.h"

namespace NBrenmark {

class CHertzMindlinRVDCTContactModel : public CContactModelWithout
{
public:
    using CContactModelWithout::CContactModelWithout;

    /// Forces as in CHertzMindlinNoSlipContactModel. The torque acts against the rolling of the surfaces on each other:
    ///
    ///     T = mu_r Fn rho D |r| / R,  D along n x (n x W)
    ///
    /// W: (omega1 + omega2) (R1 + R2) / 2, and rho = R*; on geometry omega1 R1, and rho = R1. J. Ai, J.-F. Chen,
    /// J. M. Rotter, J. Y. Ooi (2011), type A.
    bool calculateForce(SContact& contact) override;
};

} // namespace NBrenmark
