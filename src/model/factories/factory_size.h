#pragma once
// The size that a factory gives to a new particle of one type, as a scale of the type's radii.

#include "model/factories/factory_accounting.h"
#include "model/factories/factory_parameter.h"
#include "model/factories/size_distribution_kinds.h"

namespace NBrenmark {

class IFactorySize : public IFactoryParameter
{
public:
    using Family = IFactorySize;

    virtual std::unique_ptr<IFactorySize> clone() const = 0;
    /// The next particle takes this size, once.
    virtual void setNext(double value) = 0;
    /// The size of the next particle.
    virtual double next() = 0;
    virtual double minimum() const = 0;
    virtual double maximum() const = 0;
    virtual ISizeDistribution& distribution() = 0;
    virtual const ISizeDistribution& distribution() const = 0;
    /// \return false, with nothing changed, if other is of another kind
    virtual bool setDistribution(const ISizeDistribution& other) = 0;
};

/// The kind TKind, edited as TRecord, that holds a TDistribution.
template <class TKind, class TDistribution, class TRecord>
class CFactorySizeOf : public CFactoryParameterKind<TKind, CEditedAs<TRecord, IFactorySize>>
{
public:
    static constexpr const char* word = TDistribution::word;

    void setNext(double value) override
    {
        nextValue = value;
        hasNextValue = true;
    }
    double next() override
    {
        if (!hasNextValue)
            return draw();
        hasNextValue = false;
        return nextValue;
    }
    double minimum() const override { return sizeDistribution.minimum(); }
    double maximum() const override { return sizeDistribution.maximum(); }
    ISizeDistribution& distribution() override { return sizeDistribution; }
    const ISizeDistribution& distribution() const override { return sizeDistribution; }
    bool setDistribution(const ISizeDistribution& other) override
    {
        const TDistribution* const same = dynamic_cast<const TDistribution*>(&other);
        if (same == nullptr)
            return false;
        sizeDistribution = *same;
        return true;
    }

    TDistribution sizeDistribution;
    double nextValue = 0.0;
    bool hasNextValue = false;

protected:
    virtual double draw() const { return sizeDistribution.sample(); }
};

/// A kind whose law may give numbers that are no size: it is asked until it gives one.
template <class TKind, class TDistribution, class TRecord>
class CPositiveFactorySizeOf : public CFactorySizeOf<TKind, TDistribution, TRecord>
{
protected:
    double draw() const override;
};

class CFixedFactorySize : public CFactorySizeOf<CFixedFactorySize, CFixedSizeDistribution, CFixedSizeParamData>
{
public:
    void read(IFileVisitorReader& visitor) override;
    void write(IFileVisitorWriter& visitor) const override;

protected:
    void takeRecord(const CFixedSizeParamData& data) override;
    CFixedSizeParamData record() const override;
};

class CRandomFactorySize
    : public CPositiveFactorySizeOf<CRandomFactorySize, CRandomSizeDistribution, CRandomSizeParamData>
{
public:
    void read(IFileVisitorReader& visitor) override;
    void write(IFileVisitorWriter& visitor) const override;

protected:
    void takeRecord(const CRandomSizeParamData& data) override;
    CRandomSizeParamData record() const override;
};

class CNormalFactorySize
    : public CPositiveFactorySizeOf<CNormalFactorySize, CNormalSizeDistribution, CNormalSizeParamData>
{
public:
    void read(IFileVisitorReader& visitor) override;
    void write(IFileVisitorWriter& visitor) const override;

protected:
    void takeRecord(const CNormalSizeParamData& data) override;
    CNormalSizeParamData record() const override;
};

class CLogNormalFactorySize
    : public CPositiveFactorySizeOf<CLogNormalFactorySize, CLogNormalSizeDistribution, CLogNormalSizeParamData>
{
public:
    /// Unlike the law by itself: by volume, by the logarithm's mean, with wide caps.
    CLogNormalFactorySize();
    void read(IFileVisitorReader& visitor) override;
    void write(IFileVisitorWriter& visitor) const override;

protected:
    void takeRecord(const CLogNormalSizeParamData& data) override;
    CLogNormalSizeParamData record() const override;
};

class CUserDefinedFactorySize
    : public CFactorySizeOf<CUserDefinedFactorySize, CUserDefinedSizeDistribution, CUserDefinedSizeParamData>
{
public:
    void read(IFileVisitorReader& visitor) override;
    void write(IFileVisitorWriter& visitor) const override;

    /// The account of the band of that size, made when missing.
    /// \param sizeIsRadius  size is the scale of a radius, whatever the law scales
    CFactoryAccounting& bandAccountingFor(double size, bool sizeIsRadius);
    /// Starts a new creation rate in the account of each band of the law, made when missing.
    void startRate();

    FuzzyMap<CFactoryAccounting> bandAccounting; ///< by the size of the band

protected:
    void takeRecord(const CUserDefinedSizeParamData& data) override;
    CUserDefinedSizeParamData record() const override;
};

using CFactorySizeRegistry = CKindRegistry<IFactorySize>;
template <>
const CFactorySizeRegistry& CFactorySizeRegistry::instance();

} // namespace NBrenmark
