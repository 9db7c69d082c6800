#pragma once
// The charges of particles and geometry, and how far they act. The force between them is the solver's.

#include "physics/built_in_external_force.h"

namespace NBrenmark {

class IPhysicsOwner;

class CElectrostaticsExtForceParamData : public CParamData<CElectrostaticsExtForceParamData>
{
public:
    void read(IFileVisitorReader& visitor);
    void write(IFileVisitorWriter& visitor) const;

    double screeningDistance = 5.0;      ///< in radii of the smallest particle; neither 0 nor 1
    const IPhysicsOwner* deck = nullptr; ///< whose radii they are; not owned, never stored
};

class CElectrostaticsExternalForce : public CExternalForceWith<CElectrostaticsExtForceParamData>
{
public:
    /// \param deck  not owned, may be null
    explicit CElectrostaticsExternalForce(const IPhysicsOwner* deck);

    /// Finds the cutoff of the deck's particle types as they are now.
    bool starting() override;
    /// Nothing: the force between charges is the solver's, with the cutoff.
    bool calculateForce(SParticleForce& /*particle*/) override { return true; }

    /// The distance beyond which charges don't act, m: the screening distance for the smallest physical
    /// radius that there is. 0 without a particle type.
    double cutoff = 0.0;

protected:
    std::vector<SRequiredProperty> propertyTable() const override
    {
        return {{eParticleOwner, "Charge", 1, eChargeQuantity},
                {eParticleOwner, "Electrostatic Force", 3, eForceQuantity},
                {eGeometryOwner, "Charge", 1, eChargeQuantity}};
    }
};

} // namespace NBrenmark
