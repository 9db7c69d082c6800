#pragma once
// Elastic-plastic adhesion in straight branches: a contact keeps its greatest overlap and the branch
// that it is based on.

#include "physics/built_in_contact_model.h"
#include "physics/name_tables.h"
#include "physics/rolling_friction.h"

namespace NBrenmark {

/// Of a pair of materials.
struct SLeedsPair
{
    double plasticStiffness = 0.0;            ///< N/m
    double elasticStiffness = 0.0;            ///< N/m
    double plasticAdhesiveStiffness = 0.0;    ///< N/m
    double tangentialStiffness = 0.0;         ///< N/m
    double initialAdhesiveForce = 0.0;        ///< N
    double initialAdhesivePlasticForce = 0.0; ///< N
};

class CLeedsAdhesionContactModelParamData : public CParamData<CLeedsAdhesionContactModelParamData>,
                                            public CRollingFrictionParamData
{
public:
    explicit CLeedsAdhesionContactModelParamData(quint32 modelType) : CRollingFrictionParamData(modelType) {}
    void read(IFileVisitorReader& visitor);
    void write(IFileVisitorWriter& visitor) const;

    CPairTable<SLeedsPair> pairs;
};

class CLeedsAdhesionContactModel : public CContactModelWith<CLeedsAdhesionContactModelParamData>
{
public:
    using CContactModelWith::CContactModelWith;

    /// A contact of straight branches: plastic loading with k1, elastic unloading with k2, adhesive unloading with -k2 down
    /// to no force. Which branch it is on is kept in its custom properties. M. Pasha, S. Dogbe, C. Hare, A. Hassanpour,
    /// M. Ghadiri (2014).
    bool calculateForce(SContact& contact) override;
    void reset() override { parameters.pairs.clear(); }
    void materialRenamed(const std::string& oldName, const std::string& newName) override
    {
        parameters.pairs.rename(oldName, newName);
    }

protected:
    std::vector<SRequiredProperty> propertyTable() const override
    {
        return {{eContactOwner, "LEPA Maximum Overlap", 1, eNoQuantity},
                {eContactOwner, "LEPA Is Plastic", 1, eNoQuantity},
                {eContactOwner, "LEPA Is Cohesive", 1, eNoQuantity},
                {eContactOwner, "LEPA Is Zero", 1, eNoQuantity}};
    }
};

} // namespace NBrenmark
