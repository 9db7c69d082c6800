#pragma once
// The laws that sizes, magnitudes and custom property values of new particles follow. A law is at
// the same time the stored definition. The random numbers are those of platform/random.h.

#include "maths/fuzzy_less.h"

#include <QString>

namespace NBrenmark {

class IFileVisitorReader;
class IFileVisitorWriter;

class IDistribution
{
public:
    virtual ~IDistribution() = default;
    virtual double sample() const = 0;
    /// The word that files store.
    virtual QString kindWord() const = 0;
    /// Same class and exactly the same numbers.
    virtual bool equals(const IDistribution& other) const = 0;
    virtual double minimum() const = 0;
    virtual double maximum() const = 0;
    virtual void read(IFileVisitorReader& visitor) = 0;
    virtual void write(IFileVisitorWriter& visitor) const = 0;
};

// The inheritance is virtual because a size distribution is both ISizeDistribution and one of these.

class CFixedDistribution : public virtual IDistribution
{
public:
    static constexpr const char* word = "fixed";

    explicit CFixedDistribution(double value = 0.0) : value(value) {}
    double sample() const override { return value; }
    QString kindWord() const override { return word; }
    bool equals(const IDistribution& other) const override;
    double minimum() const override { return value; }
    double maximum() const override { return value; }
    void read(IFileVisitorReader& visitor) override;
    void write(IFileVisitorWriter& visitor) const override;

    double value;
};

/// Uniform from min to max, both included.
class CRandomDistribution : public virtual IDistribution
{
public:
    static constexpr const char* word = "random";

    explicit CRandomDistribution(double min = 0.0, double max = 1.0) : min(min), max(max) {}
    double sample() const override;
    QString kindWord() const override { return word; }
    bool equals(const IDistribution& other) const override;
    double minimum() const override { return min; }
    double maximum() const override { return max; }
    void read(IFileVisitorReader& visitor) override;
    void write(IFileVisitorWriter& visitor) const override;

    double min;
    double max;
};

/// Mean and spread, cut at three deviations and, with capped, at the caps.
class CNormalDistribution : public virtual IDistribution
{
public:
    static constexpr const char* word = "normal";

    explicit CNormalDistribution(double mean = 1.0, double deviation = 0.05, double lowerCap = 0.85,
                                 double upperCap = 1.15)
        : mean(mean), deviation(deviation), lowerCap(lowerCap), upperCap(upperCap)
    {}
    /// The bound where both are one, else the mean: the spread describes the law to the solver, which
    /// draws by itself. No random number is taken. The mean must lie within the caps.
    double sample() const override;
    QString kindWord() const override { return word; }
    bool equals(const IDistribution& other) const override;
    double minimum() const override;
    double maximum() const override;
    /// The bound of one side: three deviations from the mean or, with capped, the cap if it is nearer;
    /// never beyond the opposite end of the three deviations.
    virtual double bound(double mean, double deviation, double cap, bool isUpper) const;
    /// The bound in the numbers that a user sees.
    virtual double boundInUserSpace(bool isUpper) const;
    void read(IFileVisitorReader& visitor) override;
    void write(IFileVisitorWriter& visitor) const override;

    /// A cap that would lie on the wrong side of the other changes places with it.
    void setLowerCap(double value);
    void setUpperCap(double value);

    double mean;
    double deviation;
    double lowerCap;
    double upperCap;
    bool capped = false;
};

/// The logarithm of the number follows the normal law: mean, deviation, caps and bounds are those of
/// the logarithm.
class CLogNormalDistribution : public CNormalDistribution
{
public:
    static constexpr const char* word = "lognormal";

    explicit CLogNormalDistribution(double mean = 0.0, double deviation = 0.05);
    double sample() const override;
    QString kindWord() const override { return word; }
    bool equals(const IDistribution& other) const override;
    /// With logMean the user sees the logarithm's numbers, without it those of the number itself.
    double boundInUserSpace(bool isUpper) const override;
    void read(IFileVisitorReader& visitor) override;
    void write(IFileVisitorWriter& visitor) const override;

    bool logMean = true;
};

/// Some sizes, each with its share.
class CUserDefinedDistribution : public virtual IDistribution
{
public:
    static constexpr const char* word = "user defined";

    CUserDefinedDistribution() : bands{{1.0, 100.0}} {}
    /// 0 for a draw that no band covers: a draw of 0, or one beyond the last percentage.
    double sample() const override;
    QString kindWord() const override { return word; }
    bool equals(const IDistribution& other) const override;
    double minimum() const override { return bands.empty() ? 0.0 : bands.begin()->first; }
    double maximum() const override { return bands.empty() ? 0.0 : bands.rbegin()->first; }
    void read(IFileVisitorReader& visitor) override;
    void write(IFileVisitorWriter& visitor) const override;

    /// Each size's own share in percent.
    FuzzyMap<double> percentages() const;
    void setPercentages(const FuzzyMap<double>& shares);

    FuzzyMap<double> bands; ///< from size to the cumulative percentage, 0 to 100
};

} // namespace NBrenmark
