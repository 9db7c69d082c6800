#pragma once
// Size laws: distributions whose number is the scale of a particle's radius, or of its volume.

#include "model/factories/distributions.h"
#include "model/factories/kind_registry.h"

namespace NBrenmark {

/// What makes a distribution a size law. Whatever the scaling, sample, minimum and maximum give the
/// scale of the radius: a volume's is brought to it by the cube root. The bounds of a log-normal law
/// are those of the logarithm; a negative one has no root and gives not-a-number.
class ISizeDistribution : public virtual IDistribution
{
public:
    virtual std::unique_ptr<ISizeDistribution> clone() const = 0;
    /// The part that all size laws have in common; each law reads and writes it after its own.
    void read(IFileVisitorReader& visitor) override;
    void write(IFileVisitorWriter& visitor) const override;

    bool radiusScaling = true; ///< the number scales the radius; otherwise the volume

protected:
    double radiusScale(double number) const;
};

/// The size law TSize that follows TLaw.
template <class TSize, class TLaw>
class CSizeDistributionOf : public ISizeDistribution, public TLaw
{
public:
    using TLaw::TLaw;

    std::unique_ptr<ISizeDistribution> clone() const override
    {
        return std::make_unique<TSize>(static_cast<const TSize&>(*this));
    }
    double sample() const override { return radiusScale(TLaw::sample()); }
    double minimum() const override { return radiusScale(TLaw::minimum()); }
    double maximum() const override { return radiusScale(TLaw::maximum()); }
    bool equals(const IDistribution& other) const override
    {
        return TLaw::equals(other) && radiusScaling == dynamic_cast<const ISizeDistribution&>(other).radiusScaling;
    }
    void read(IFileVisitorReader& visitor) override = 0;
    void write(IFileVisitorWriter& visitor) const override = 0;
};

class CFixedSizeDistribution : public CSizeDistributionOf<CFixedSizeDistribution, CFixedDistribution>
{
public:
    CFixedSizeDistribution() : CSizeDistributionOf(1.0) {}
    void read(IFileVisitorReader& visitor) override;
    void write(IFileVisitorWriter& visitor) const override;
};

class CRandomSizeDistribution : public CSizeDistributionOf<CRandomSizeDistribution, CRandomDistribution>
{
public:
    CRandomSizeDistribution() : CSizeDistributionOf(0.5, 1.5) {}
    void read(IFileVisitorReader& visitor) override;
    void write(IFileVisitorWriter& visitor) const override;
};

class CNormalSizeDistribution : public CSizeDistributionOf<CNormalSizeDistribution, CNormalDistribution>
{
public:
    CNormalSizeDistribution() : CSizeDistributionOf(1.0, 0.05, 1e-5, 1.0) {}
    void read(IFileVisitorReader& visitor) override;
    void write(IFileVisitorWriter& visitor) const override;
};

class CLogNormalSizeDistribution : public CSizeDistributionOf<CLogNormalSizeDistribution, CLogNormalDistribution>
{
public:
    CLogNormalSizeDistribution() { logMean = false; }
    void read(IFileVisitorReader& visitor) override;
    void write(IFileVisitorWriter& visitor) const override;
};

class CUserDefinedSizeDistribution : public CSizeDistributionOf<CUserDefinedSizeDistribution, CUserDefinedDistribution>
{
public:
    void read(IFileVisitorReader& visitor) override;
    void write(IFileVisitorWriter& visitor) const override;
};

using CSizeDistributionRegistry = CKindRegistry<ISizeDistribution>;
template <>
const CSizeDistributionRegistry& CSizeDistributionRegistry::instance();

} // namespace NBrenmark
