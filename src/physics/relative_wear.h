#pragma once
// The bookkeeping of energies and forces on geometry. It works on what the models before it did, so
// a chain keeps it last.

#include "physics/built_in_contact_model.h"

namespace NBrenmark {

class CRelativeWearContactModel : public CContactModelWithout
{
public:
    using CContactModelWithout::CContactModelWithout;

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
