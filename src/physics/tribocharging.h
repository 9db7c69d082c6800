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

protected:
    std::vector<SRequiredProperty> propertyTable() const override
    {
        return {{eParticleOwner, "Charge", 1, eChargeQuantity}, {eGeometryOwner, "Charge", 1, eChargeQuantity}};
    }
};

} // namespace NBrenmark
