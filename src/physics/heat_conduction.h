#pragma once
// Heat that flows through contacts. It gathers in a particle's heat flux; "Temperature Update", the
// external force, turns the flux into a change of temperature.

#include "physics/built_in_contact_model.h"
#include "physics/name_tables.h"

namespace NBrenmark {

class CHeatConductionModelParamData : public CParamData<CHeatConductionModelParamData>
{
public:
    void read(IFileVisitorReader& visitor);
    void write(IFileVisitorWriter& visitor) const;

    CNameTable conductivities; ///< by particle type, W/(m K)
};

class CHeatConductionModel : public CContactModelWith<CHeatConductionModelParamData>
{
public:
    using CContactModelWith::CContactModelWith;
    void reset() override { parameters.conductivities.clear(); }
    void particleTypeRenamed(const std::string& oldName, const std::string& newName) override
    {
        parameters.conductivities.rename(oldName, newName);
    }

protected:
    std::vector<SRequiredProperty> propertyTable() const override
    {
        return {{eParticleOwner, "Temperature", 1, eTemperatureQuantity},
                {eParticleOwner, "Heat Flux", 2, eHeatFluxQuantity}};
    }
};

} // namespace NBrenmark
