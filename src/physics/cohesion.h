#pragma once
// A normal force that holds touching elements together. The two laws differ in the radius that they
// take, and share their record.

#include "physics/built_in_contact_model.h"
#include "physics/name_tables.h"

namespace NBrenmark {

class CCohesionContactModelParamData : public CParamData<CCohesionContactModelParamData>
{
public:
    explicit CCohesionContactModelParamData(quint32 modelType) : modelType(modelType) {}
    void read(IFileVisitorReader& visitor);
    void write(IFileVisitorWriter& visitor) const;

    CPairTable<double> energyDensity; ///< J/m^3; no force for a pair without an entry
    quint32 modelType;
};

class CCohesionContactModel : public CContactModelWith<CCohesionContactModelParamData>
{
public:
    using CContactModelWith::CContactModelWith;

    /// Fn = k pi d 2 R1, attractive; k: energy density of the pair.
    bool calculateForce(SContact& contact) override;
    /// False if a pair of the deck's materials has no entry.
    bool starting(quint32 threadCount) override;
    void reset() override { parameters.energyDensity.clear(); }
    void materialRenamed(const std::string& oldName, const std::string& newName) override
    {
        parameters.energyDensity.rename(oldName, newName);
    }

protected:
    /// k pi d times a length is the force.
    virtual double lengthOf(const SContact& contact) const;
};

class CCohesionV2ContactModel : public CCohesionContactModel
{
public:
    using CCohesionContactModel::CCohesionContactModel;

protected:
    /// R* between particles, R1 on geometry: Fn = k pi d R*.
    double lengthOf(const SContact& contact) const override;
};

} // namespace NBrenmark
