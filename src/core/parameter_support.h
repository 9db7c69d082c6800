#pragma once
// How an object with parameters is edited as a whole: it gives its values as one plain record and
// takes such a record back.

#include <memory>
#include <typeindex>
#include <typeinfo>

namespace NBrenmark {

/// A plain record of parameters.
class IParamData
{
public:
    virtual ~IParamData() = default;
    /// \return false, with nothing changed, if other isn't of exactly this class
    virtual bool copyFrom(const IParamData& other) = 0;
};

/// The record of class TRecord; derive as class CThat : public CParamData<CThat>.
template <class TRecord>
class CParamData : public IParamData
{
public:
    bool copyFrom(const IParamData& other) override
    {
        if (typeid(other) != typeid(TRecord))
            return false;
        static_cast<TRecord&>(*this) = static_cast<const TRecord&>(other);
        return true;
    }
};

class IParameterSupport
{
public:
    virtual ~IParameterSupport() = default;
    /// \return false, with nothing changed, if the record isn't of the class that the object expects
    virtual bool setParamData(const IParamData& data) = 0;
    /// A new record of the object's values; null if there is nothing to edit.
    virtual std::unique_ptr<IParamData> paramData() const = 0;
    /// The class of the record; that of void if there is nothing to edit.
    virtual std::type_index paramDataType() const = 0;
};

/// TBase, an IParameterSupport, edited as records of class TRecord.
template <class TRecord, class TBase>
class CEditedAs : public TBase
{
public:
    using TBase::TBase;

    bool setParamData(const IParamData& data) override
    {
        if (typeid(data) != typeid(TRecord))
            return false;
        takeRecord(static_cast<const TRecord&>(data));
        return true;
    }
    std::unique_ptr<IParamData> paramData() const override { return std::make_unique<TRecord>(record()); }
    std::type_index paramDataType() const override { return typeid(TRecord); }

protected:
    virtual void takeRecord(const TRecord& data) = 0;
    virtual TRecord record() const = 0;
};

/// TBase, an IParameterSupport, without anything to edit.
template <class TBase>
class CNothingToEdit : public TBase
{
public:
    using TBase::TBase;

    bool setParamData(const IParamData&) override { return false; }
    std::unique_ptr<IParamData> paramData() const override { return nullptr; }
    std::type_index paramDataType() const override { return typeid(void); }
};

} // namespace NBrenmark
