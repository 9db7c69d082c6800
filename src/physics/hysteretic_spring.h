#pragma once
// A spring that yields: a contact keeps the overlap that is left of its greatest load.

#include "physics/built_in_contact_model.h"
#include "physics/name_tables.h"
#include "physics/rolling_friction.h"

namespace NBrenmark {

struct SHystereticInteraction
{
    bool operator==(const SHystereticInteraction& other) const
    {
        return damping == other.damping && stiffness == other.stiffness;
    }

    double damping = 0.0;   ///< factor
    double stiffness = 0.0; ///< factor from the normal to the tangential stiffness
};

class CHystereticContactModelParamData : public CParamData<CHystereticContactModelParamData>,
                                         public CRollingFrictionParamData
{
public:
    explicit CHystereticContactModelParamData(quint32 modelType) : CRollingFrictionParamData(modelType) {}
    void read(IFileVisitorReader& visitor);
    void write(IFileVisitorWriter& visitor) const;

    CNameTable yields; ///< yield strength by particle type or geometry, Pa
    CPairTable<SHystereticInteraction> interactions;
};

class CHystereticContactModel : public CContactModelWith<CHystereticContactModelParamData>
{
public:
    using CContactModelWith::CContactModelWith;

    /// A spring that loads at one stiffness and unloads at a greater one, so that an overlap is left:
    ///
    ///     loading    F = K1 d,         K1 = 5 R* min(yield1, yield2), left: (1 - e^2) d
    ///     unloading  F = K1 (d - left) / e^2
    ///
    /// Tangential stiffness: K1 times the stiffness factor of the pair; damping times its damping factor. O. R. Walton,
    /// R. L. Braun (1986).
    bool calculateForce(SContact& contact) override;
    void reset() override
    {
        parameters.yields.clear();
        parameters.interactions.clear();
    }
    void materialRenamed(const std::string& oldName, const std::string& newName) override
    {
        parameters.interactions.rename(oldName, newName);
    }
    void particleTypeRenamed(const std::string& oldName, const std::string& newName) override
    {
        parameters.yields.rename(oldName, newName);
    }
    void geometryRenamed(const std::string& oldName, const std::string& newName) override
    {
        parameters.yields.rename(oldName, newName);
    }

protected:
    std::vector<SRequiredProperty> propertyTable() const override
    {
        return {{eContactOwner, "Residual Overlap", 1, eLengthQuantity}};
    }
};

} // namespace NBrenmark
