#pragma once
// Turns the heat flux that contacts gather on a particle into a change of its temperature.

#include "physics/built_in_external_force.h"
#include "physics/heat_properties.h"
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
    /// Adds no force. dT = (q0 + q1) dt / (m c), with the two elements of the heat flux and the heat capacity c of the type.
    bool calculateForce(SParticleForce& particle) override;
    void particleTypeRenamed(const std::string& oldName, const std::string& newName) override
    {
        parameters.heatCapacities.rename(oldName, newName);
    }

protected:
    std::vector<SRequiredProperty> propertyTable() const override { return heatProperties(); }
};

} // namespace NBrenmark
