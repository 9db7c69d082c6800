#pragma once
// Elasto-plastic adhesion: a contact keeps the overlap up to which it deformed for good.

#include "physics/built_in_contact_model.h"
#include "physics/name_tables.h"
#include "physics/rolling_friction.h"

namespace NBrenmark {

/// Of a pair of materials.
struct SEdinburghPair
{
    double constPullOffForce = 0.0;      ///< N
    double surfaceEnergy = 0.0;          ///< J/m^2
    double contactPlasticityRatio = 0.0; ///< below 1
    double slopeExponential = 1.0;
    double tensileExponential = 0.0;
    double tangentStiffMultiplier = 0.0;
};

class CEdinburghCohesionContactModelParamData : public CParamData<CEdinburghCohesionContactModelParamData>,
                                                public CRollingFrictionParamData
{
public:
    explicit CEdinburghCohesionContactModelParamData(quint32 modelType) : CRollingFrictionParamData(modelType) {}
    void read(IFileVisitorReader& visitor);
    void write(IFileVisitorWriter& visitor) const;

    CPairTable<SEdinburghPair> pairs;
};

class CEdinburghCohesionContactModel : public CContactModelWith<CEdinburghCohesionContactModelParamData>
{
public:
    using CContactModelWith::CContactModelWith;

    /// A contact that yields on loading, unloads stiffer, and sticks by a pull-off that grows with the area it was pressed
    /// to. Three branches of the overlap d, of which dp is left for good:
    ///
    ///     loading     F1 = k1 d^N
    ///     unloading   F2 = k2 (d^N - dp^N),  k2 = k1 / (1 - lambda)
    ///     adhesion    F3 = -A d^X
    ///
    /// Acts at zero and negative overlap as well. J. P. Morrissey (2013), University of Edinburgh; S. C. Thakur et al. (2014).
    bool calculateForce(SContact& contact) override;
    void reset() override { parameters.pairs.clear(); }
    void materialRenamed(const std::string& oldName, const std::string& newName) override
    {
        parameters.pairs.rename(oldName, newName);
    }

protected:
    std::vector<SRequiredProperty> propertyTable() const override
    {
        return {{eContactOwner, "Plastic Overlap", 1, eLengthQuantity}};
    }
};

} // namespace NBrenmark
