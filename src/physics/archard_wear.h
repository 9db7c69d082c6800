#pragma once
// Wear of geometry by the work of the contacts on it.

#include "physics/built_in_contact_model.h"
#include "physics/name_tables.h"
#include "physics/rolling_friction.h"

namespace NBrenmark {

class CArchardContactModelParamData : public CParamData<CArchardContactModelParamData>, public CRollingFrictionParamData
{
public:
    explicit CArchardContactModelParamData(quint32 modelType) : CRollingFrictionParamData(modelType) {}
    void read(IFileVisitorReader& visitor);
    void write(IFileVisitorWriter& visitor) const;

    CNameTable wearConstants; ///< by geometry, 1/Pa; no wear where there is no entry
};

class CArchardContactModel : public CContactModelWith<CArchardContactModelParamData>
{
public:
    using CContactModelWith::CContactModelWith;

    /// Forces as in CHertzMindlinNoSlipContactModel. Geometry wears by the depth
    ///
    ///     h += W |normal damping| |vt| dt / A
    ///
    /// W: wear constant of the geometry; A: area of the triangle. J. F. Archard (1953).
    bool calculateForce(SContact& contact) override;

    void reset() override { parameters.wearConstants.clear(); }
    void geometryRenamed(const std::string& oldName, const std::string& newName) override
    {
        parameters.wearConstants.rename(oldName, newName);
    }

protected:
    std::vector<SRequiredProperty> propertyTable() const override
    {
        return {{eGeometryOwner, "Archard Wear", 1, eLengthQuantity}};
    }
};

} // namespace NBrenmark
