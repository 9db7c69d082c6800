#pragma once
// What the built-in contact models share: the row of the registry they answer by, and their record.

#include "physics/contact_model.h"

#include <type_traits>
#include <vector>

namespace NBrenmark {

/// A model that answers by its row of contactModelKinds.
class CBuiltInContactModel : public IContactModel
{
public:
    explicit CBuiltInContactModel(quint32 modelType) : IContactModel(modelType, eBuiltInModel) {}

    QString modelName() const override;
    quint32 chainRole() const override;
    quint32 chainPosition() const override;
    bool capabilityFlag() const override;
    RequiredProperties requiredProperties(unsigned int ownerType) const override;
    void managerChanged(CCustomPropertyManager& manager, int value) override;
    void propertyAdded(CCustomPropertyManager& manager) override { managerChanged(manager, 0); }

protected:
    /// The custom properties of all owners.
    virtual std::vector<SRequiredProperty> propertyTable() const { return {}; }
    /// Where the property of a row of the table is among those of its owner; notFound while no values are stored for it.
    unsigned int indexOf(std::size_t row) const { return indices.of(row); }
    /// Whether that is known of all rows.
    bool areResolved() const { return indices.areResolved(); }

private:
    CPropertyIndices indices;
};

/// A model with parameters of class TRecord.
template <class TRecord>
class CContactModelWith : public CEditedAs<TRecord, CBuiltInContactModel>
{
public:
    explicit CContactModelWith(quint32 modelType)
        : CEditedAs<TRecord, CBuiltInContactModel>(modelType), parameters(newRecord(modelType))
    {}
    void read(IFileVisitorReader& visitor) override { parameters.read(visitor); }
    void write(IFileVisitorWriter& visitor) const override { parameters.write(visitor); }

    TRecord parameters;

protected:
    void takeRecord(const TRecord& data) override { parameters = data; }
    TRecord record() const override { return parameters; }

private:
    static TRecord newRecord([[maybe_unused]] quint32 modelType)
    {
        if constexpr (std::is_default_constructible_v<TRecord>)
            return TRecord();
        else
            return TRecord(modelType);
    }
};

/// A model without parameters.
class CContactModelWithout : public CNothingToEdit<CBuiltInContactModel>
{
public:
    using CNothingToEdit::CNothingToEdit;
    void read(IFileVisitorReader& /*visitor*/) override {}
    void write(IFileVisitorWriter& /*visitor*/) const override {}
};

} // namespace NBrenmark
