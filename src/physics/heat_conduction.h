#pragma once
// Heat that flows through contacts. It gathers in a particle's heat flux; "Temperature Update", the
// external force, turns the flux into a change of temperature.

#include "physics/built_in_contact_model.h"
#include "physics/heat_properties.h"
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

    /// Forces as in CHertzMindlinNoSlipContactModel, with rolling friction on both sides. Heat flows by
    ///
    ///     q = 4 k1 k2 / (k1 + k2) a (T2 - T1),  a = (3 Fn R* / (4 E*))^0.3333
    ///
    /// k: conductivities; a: radius of the area of contact. It is added to the heat flux of either particle. B. Chaudhuri,
    /// F. J. Muzzio, M. S. Tomassone (2006).
    bool calculateForce(SContact& contact) override;
    /// Sets the first element of the heat flux, that of the contacts, to 0.
    void beginStep(const std::vector<CCustomPropertyData*>& particles) override;

    void reset() override { parameters.conductivities.clear(); }
    void particleTypeRenamed(const std::string& oldName, const std::string& newName) override
    {
        parameters.conductivities.rename(oldName, newName);
    }

protected:
    std::vector<SRequiredProperty> propertyTable() const override { return heatProperties(); }
};

} // namespace NBrenmark
