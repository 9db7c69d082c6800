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
    void reset() override { parameters.surfaceEnergy.clear(); }
    void materialRenamed(const std::string& oldName, const std::string& newName) override
    {
        parameters.surfaceEnergy.rename(oldName, newName);
    }
};

} // namespace NBrenmark
