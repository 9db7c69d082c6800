// The laws: how a number is drawn, and when two laws are the same.
#include "model/factories/distributions.h"

#include "platform/random.h"
#include "visitors/file_visitor_reader.h"
#include "visitors/file_visitor_writer.h"

#include <algorithm>
#include <typeinfo>
#include <utility>

namespace NBrenmark {

/// Bounds lie at so many deviations from the mean.
constexpr double deviationsToBound = 3.0;

/// other as a TDistribution if it is of the same class as self, else null.
template <class TDistribution>
static const TDistribution* sameClass(const TDistribution& self, const IDistribution& other)
{
    return typeid(self) == typeid(other) ? dynamic_cast<const TDistribution*>(&other) : nullptr;
}

// ---------------------------------------------------------------- fixed

bool CFixedDistribution::equals(const IDistribution& other) const
{
    const CFixedDistribution* const o = sameClass(*this, other);
    return o != nullptr && value == o->value;
}

void CFixedDistribution::read(IFileVisitorReader& v) { v.readFixedDistribution(*this); }

void CFixedDistribution::write(IFileVisitorWriter& v) const { v.writeFixedDistribution(*this); }

// ---------------------------------------------------------------- random

double CRandomDistribution::sample() const { return uniform() * (max - min) + min; }

bool CRandomDistribution::equals(const IDistribution& other) const
{
    const CRandomDistribution* const o = sameClass(*this, other);
    return o != nullptr && min == o->min && max == o->max;
}

void CRandomDistribution::read(IFileVisitorReader& v) { v.readRandomDistribution(*this); }

void CRandomDistribution::write(IFileVisitorWriter& v) const { v.writeRandomDistribution(*this); }

// ---------------------------------------------------------------- normal

double CNormalDistribution::bound(double mean, double deviation, double cap, bool isUpper) const
{
    const double low = mean - deviationsToBound * deviation;
    const double high = mean + deviationsToBound * deviation;
    if (isUpper)
        return std::max(capped ? std::min(cap, high) : high, low);
    return std::min(capped ? std::max(cap, low) : low, high);
}

double CNormalDistribution::boundInUserSpace(bool isUpper) const
{
    return bound(mean, deviation, isUpper ? upperCap : lowerCap, isUpper);
}

double CNormalDistribution::minimum() const { return bound(mean, deviation, lowerCap, false); }

double CNormalDistribution::maximum() const { return bound(mean, deviation, upperCap, true); }

double CNormalDistribution::sample() const
{
    // Not the virtual ones: a size distribution gives its bounds as scales of the radius.
    const double lower = CNormalDistribution::minimum();
    const double upper = CNormalDistribution::maximum();
    return fuzzyEqual(lower, upper) ? lower : mean;
}

bool CNormalDistribution::equals(const IDistribution& other) const
{
    const CNormalDistribution* const o = sameClass(*this, other);
    return o != nullptr && mean == o->mean && deviation == o->deviation && lowerCap == o->lowerCap &&
           upperCap == o->upperCap && capped == o->capped;
}

void CNormalDistribution::setLowerCap(double value)
{
    lowerCap = value;
    if (lowerCap > upperCap)
        std::swap(lowerCap, upperCap);
}

void CNormalDistribution::setUpperCap(double value)
{
    upperCap = value;
    if (upperCap < lowerCap)
        std::swap(lowerCap, upperCap);
}

void CNormalDistribution::read(IFileVisitorReader& v) { v.readNormalDistribution(*this); }

void CNormalDistribution::write(IFileVisitorWriter& v) const { v.writeNormalDistribution(*this); }

// ---------------------------------------------------------------- log-normal

CLogNormalDistribution::CLogNormalDistribution(double mean, double deviation)
    : CNormalDistribution(mean, deviation, mean - deviationsToBound * deviation, mean + deviationsToBound * deviation)
{}

double CLogNormalDistribution::sample() const { return std::exp(CNormalDistribution::sample()); }

bool CLogNormalDistribution::equals(const IDistribution& other) const
{
    return CNormalDistribution::equals(other) && logMean == dynamic_cast<const CLogNormalDistribution&>(other).logMean;
}

double CLogNormalDistribution::boundInUserSpace(bool isUpper) const
{
    if (logMean)
        return CNormalDistribution::boundInUserSpace(isUpper);
    // Mean and deviation of the number itself: Johnson, Kotz, Balakrishnan, Continuous Univariate
    // Distributions 1 (1994), chapter 14.
    const double variance = deviation * deviation;
    const double userMean = std::exp(0.5 * variance + mean);
    const double userDeviation = std::sqrt(std::exp(variance) - 1.0) * userMean;
    return bound(userMean, userDeviation, std::exp(isUpper ? upperCap : lowerCap), isUpper);
}

void CLogNormalDistribution::read(IFileVisitorReader& v) { v.readLogNormalDistribution(*this); }

void CLogNormalDistribution::write(IFileVisitorWriter& v) const { v.writeLogNormalDistribution(*this); }

// ---------------------------------------------------------------- user defined

double CUserDefinedDistribution::sample() const
{
    const double draw = uniform() * 100.0;
    double previous = 0.0;
    for (const auto& [size, percentage] : bands) {
        if (draw > previous && draw <= percentage)
            return size;
        previous = percentage;
    }
    return 0.0;
}

bool CUserDefinedDistribution::equals(const IDistribution& other) const
{
    const CUserDefinedDistribution* const o = sameClass(*this, other);
    return o != nullptr && bands == o->bands;
}

FuzzyMap<double> CUserDefinedDistribution::percentages() const
{
    FuzzyMap<double> shares;
    double previous = 0.0;
    for (const auto& [size, percentage] : bands) {
        shares.emplace_hint(shares.end(), size, percentage - previous);
        previous = percentage;
    }
    return shares;
}

void CUserDefinedDistribution::setPercentages(const FuzzyMap<double>& shares)
{
    bands.clear();
    double sum = 0.0;
    for (const auto& [size, share] : shares)
        bands.emplace_hint(bands.end(), size, sum += share);
}

void CUserDefinedDistribution::read(IFileVisitorReader& v) { v.readUserDefinedDistribution(*this); }

void CUserDefinedDistribution::write(IFileVisitorWriter& v) const { v.writeUserDefinedDistribution(*this); }

} // namespace NBrenmark
