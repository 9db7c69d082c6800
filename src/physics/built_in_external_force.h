#pragma once
// What the built-in external forces share: the row of the registry they answer by, and their record.

#include "physics/external_force.h"

#include <vector>

namespace NBrenmark {

/// A force that answers by its row of externalForceKinds.
class CBuiltInExternalForce : public IExternalForce
{
public:
    CBuiltInExternalForce() : IExternalForce(eBuiltInModel) {}

    QString modelName() const override;
    bool capabilityFlag() const override;
    RequiredProperties requiredProperties(unsigned int ownerType) const override;
    void managerChanged(CCustomPropertyManager& manager, int value) override;
    void propertyAdded(CCustomPropertyManager& manager) override { managerChanged(manager, 0); }

protected:
    /// The custom properties of all owners.
    virtual std::vector<SRequiredProperty> propertyTable() const = 0;
    /// Where the property of a row of the table is among those of its owner; notFound while no values are stored for it.
    unsigned int indexOf(std::size_t row) const { return indices.of(row); }
    bool areResolved() const { return indices.areResolved(); }

private:
    CPropertyIndices indices;
};

/// A force with parameters of class TRecord.
template <class TRecord>
class CExternalForceWith : public CEditedAs<TRecord, CBuiltInExternalForce>
{
public:
    void read(IFileVisitorReader& visitor) override { parameters.read(visitor); }
    void write(IFileVisitorWriter& visitor) const override { parameters.write(visitor); }

    TRecord parameters;

protected:
    void takeRecord(const TRecord& data) override { parameters = data; }
    TRecord record() const override { return parameters; }
};

} // namespace NBrenmark
