#pragma once
// Cohesion of fine, dry particles by their surface energy.

#include "physics/built_in_contact_model.h"
#include "physics/name_tables.h"
#include "physics/rolling_friction.h"

namespace NBrenmark {

class CJkrContactModelParamData : public CParamData<CJkrContactModelParamData>, public CRollingFrictionParamData
{
public:
    explicit CJkrContactModelParamData(quint32 modelType) : CRollingFrictionParamData(modelType) {}
    void read(IFileVisitorReader& visitor);
    void write(IFileVisitorWriter& visitor) const;

    CPairTable<double> surfaceEnergy; ///< J/m^2; 0 for a pair without an entry
};

class CJkrContactModel : public CContactModelWith<CJkrContactModelParamData>
{
public:
    using CContactModelWith::CContactModelWith;

    /// Elastic spheres that stick together by their surface energy, also at some distance:
    ///
    ///     Fn = 4 E* a^3 / (3 R*) - 4 sqrt(pi gamma E*) a^(3/2)
    ///     d  = a^2 / R* - sqrt(4 pi gamma a / E*)
    ///
    /// a: radius of the area of contact, the greatest root of the second line; gamma: surface energy of the pair. Damping,
    /// tangential force and rolling friction as in CHertzMindlinNoSlipContactModel, while the surfaces overlap. K. L. Johnson,
    /// K. Kendall, A. D. Roberts (1971).
    bool calculateForce(SContact& contact) override;
    void reset() override { parameters.surfaceEnergy.clear(); }
    void materialRenamed(const std::string& oldName, const std::string& newName) override
    {
        parameters.surfaceEnergy.rename(oldName, newName);
    }
};

} // namespace NBrenmark
