#pragma once
// The bookkeeping of energies and forces on geometry. It works on what the models before it did, so
// a chain keeps it last.

#include "physics/built_in_contact_model.h"

namespace NBrenmark {

class CRelativeWearContactModel : public CContactModelWithout
{
public:
    using CContactModelWithout::CContactModelWithout;

    /// Adds no force. Of the forces that the models before it left, it adds up on geometry
    ///
    ///     normal energy     |vn| Fn dt  while the sides part       normal force      Fn at each turn of vn
    ///     tangential energy |vt| Ft dt                             tangential force  Ft
    bool calculateForce(SContact& contact) override;

protected:
    std::vector<SRequiredProperty> propertyTable() const override
    {
        return {{eContactOwner, "Previous Normal Velocity", 1, eVelocityQuantity},
                {eGeometryOwner, "Normal Cumulative Contact Energy", 1, eEnergyQuantity},
                {eGeometryOwner, "Tangential Cumulative Contact Energy", 1, eEnergyQuantity},
                {eGeometryOwner, "Normal Cumulative Force", 1, eForceQuantity},
                {eGeometryOwner, "Tangential Cumulative Force", 1, eForceQuantity}};
    }
};

} // namespace NBrenmark
