#pragma once
// The values that a factory gives to one custom property of a new particle.

#include "model/factories/distributions.h"
#include "model/factories/factory_parameter.h"

#include <vector>

namespace NBrenmark {

class CCustomPropertyMetaData;
class CCustomPropertyValueList;

class IFactoryCustomPropertyParam : public IFactoryParameter
{
public:
    using Family = IFactoryCustomPropertyParam;

    virtual std::unique_ptr<IFactoryCustomPropertyParam> clone() const = 0;
    /// Gives the new item its values. Nothing happens while no property is bound, without outValues, or
    /// if the item isn't there.
    virtual void assign(quint32 item, CCustomPropertyValueList* outValues) const = 0;
    /// Ties the parameter to a property and takes its own values from the property's initial ones.
    /// \param definition  not owned
    virtual void bind(const CCustomPropertyMetaData* definition) { boundProperty = definition; }
    /// Null until bound.
    const CCustomPropertyMetaData* property() const { return boundProperty; }

private:
    const CCustomPropertyMetaData* boundProperty = nullptr;
};

/// Leaves the property's initial values. There is nothing to store.
class CInitialValueCustomPropertyFactoryParam
    : public CFactoryParameterKind<CInitialValueCustomPropertyFactoryParam, CNothingToEdit<IFactoryCustomPropertyParam>>
{
public:
    static constexpr const char* word = "initial";

    void assign(quint32, CCustomPropertyValueList*) const override {}
    void read(IFileVisitorReader&) override {}
    void write(IFileVisitorWriter&) const override {}
};

/// The same values for every particle.
class CFixedValueCustomPropertyFactoryParam
    : public CFactoryParameterKind<CFixedValueCustomPropertyFactoryParam, IFactoryCustomPropertyParam>
{
public:
    static constexpr const char* word = "fixed";

    void assign(quint32 item, CCustomPropertyValueList* outValues) const override;
    void bind(const CCustomPropertyMetaData* definition) override;
    void read(IFileVisitorReader& visitor) override;
    void write(IFileVisitorWriter& visitor) const override;
    /// The record of a boolean property holds bits, that of any other numbers.
    bool setParamData(const IParamData& data) override;
    std::unique_ptr<IParamData> paramData() const override;
    std::type_index paramDataType() const override;

    /// Takes what a file holds. Bound to a property, the values stay one for each element: those too many
    /// are dropped, and for those that are missing the initial ones stay.
    /// \return false if there were too many or too few
    bool takeStored(const std::vector<double>& stored);

    std::vector<double> values; ///< one for each element; flags are 0.0 and 1.0

private:
    bool isBoolean() const;
};

class CRandomValueCustomPropertyFactoryParam
    : public CFactoryParameterKind<CRandomValueCustomPropertyFactoryParam,
                                   CEditedAs<CRandomParamData, IFactoryCustomPropertyParam>>
{
public:
    static constexpr const char* word = "random";

    void assign(quint32 item, CCustomPropertyValueList* outValues) const override;
    void bind(const CCustomPropertyMetaData* definition) override;
    void read(IFileVisitorReader& visitor) override;
    void write(IFileVisitorWriter& visitor) const override;

    CRandomDistribution distribution;

protected:
    void takeRecord(const CRandomParamData& data) override;
    CRandomParamData record() const override;
};

class CNormalDistCustomPropertyFactoryParam
    : public CFactoryParameterKind<CNormalDistCustomPropertyFactoryParam,
                                   CEditedAs<CFloatingPointNormalDistParamData, IFactoryCustomPropertyParam>>
{
public:
    static constexpr const char* word = "normal";

    void assign(quint32 item, CCustomPropertyValueList* outValues) const override;
    void bind(const CCustomPropertyMetaData* definition) override;
    void read(IFileVisitorReader& visitor) override;
    void write(IFileVisitorWriter& visitor) const override;

    CNormalDistribution distribution{1.0, 1.0};

protected:
    void takeRecord(const CFloatingPointNormalDistParamData& data) override;
    CFloatingPointNormalDistParamData record() const override;
};

using CFactoryCustomPropertyRegistry = CKindRegistry<IFactoryCustomPropertyParam>;
template <>
const CFactoryCustomPropertyRegistry& CFactoryCustomPropertyRegistry::instance();

} // namespace NBrenmark
