#pragma once
// Charge that moves between touching bodies of different work functions.

#include "physics/built_in_contact_model.h"

namespace NBrenmark {

class CTribochargingContactModelParamData : public CParamData<CTribochargingContactModelParamData>
{
public:
    void read(IFileVisitorReader& visitor);
    void write(IFileVisitorWriter& visitor) const;

    double alpha = 1.0; ///< how fast a body takes charge, 1/s; not 0
};

class CTribochargingContactModel : public CContactModelWith<CTribochargingContactModelParamData>
{
public:
    using CContactModelWith::CContactModelWith;

    /// Adds no force. Moves charge between bodies of different work functions:
    ///
    ///     dQ = (4 pi R^2 sigma - |q|) alpha dt,  sigma = 2.66e-5 C/m^2
    ///
    /// R, q: radius and charge of the side that charges, the smaller one; sigma: the most that a surface bears.
    bool calculateForce(SContact& contact) override;

protected:
    std::vector<SRequiredProperty> propertyTable() const override
    {
        return {{eParticleOwner, "Charge", 1, eChargeQuantity}, {eGeometryOwner, "Charge", 1, eChargeQuantity}};
    }
};

} // namespace NBrenmark
