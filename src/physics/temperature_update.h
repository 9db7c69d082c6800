#pragma once
// Turns the heat flux that contacts gather on a particle into a change of its temperature.

#include "physics/built_in_external_force.h"
#include "physics/name_tables.h"

namespace NBrenmark {

class CHeatConductionExtForceParamData : public CParamData<CHeatConductionExtForceParamData>
{
public:
    void read(IFileVisitorReader& visitor);
    void write(IFileVisitorWriter& visitor) const;

    CNameTable heatCapacities; ///< by particle type, J/(kg K)
};

class CHeatConductionExternalForce : public CExternalForceWith<CHeatConductionExtForceParamData>
{
public:
    void particleTypeRenamed(const std::string& oldName, const std::string& newName) override
    {
        parameters.heatCapacities.rename(oldName, newName);
    }

protected:
    std::vector<SRequiredProperty> propertyTable() const override
    {
        return {{eParticleOwner, "Temperature", 1, eTemperatureQuantity},
                {eParticleOwner, "Heat Flux", 2, eHeatFluxQuantity}};
    }
};

} // namespace NBrenmark
