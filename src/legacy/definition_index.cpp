// Particle types by their definition: how near two of them have to be to be one.
#include "legacy/definition_index.h"

#include "model/particle_type.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

namespace NBrenmark::NLegacySupport {

/// About the logarithm of a number to the base 2, straight from one power of 2 to the next: numbers that are equal within
/// 1e-12 of each other have values within 2e-12. Numbers near nothing have one value, as those within 1e-40 of it are
/// equal.
static double sizeOf(double number)
{
    constexpr double least = 1e-28;
    constexpr double ofExponent = 1.0 / 4503599627370496.0; // 2^-52
    const double size = std::min(std::max(std::abs(number), least), std::numeric_limits<double>::max());
    quint64 bits = 0;
    std::memcpy(&bits, &size, sizeof bits);
    return static_cast<double>(bits) * ofExponent;
}

/// One number of all that a definition holds, and how many they are. Each has a weight of its own, so that different
/// definitions hardly ever have the same sum.
struct SMeasure
{
    explicit SMeasure(const CParticleType& type)
    {
        for (const double value : {type.rawMass, type.rawVolume})
            take(value);
        take(type.rawInertia);
        for (const CSphere& sphere : type.spheres) {
            take(sphere.contactRadius);
            take(sphere.physicalRadius);
            take(sphere.position);
        }
    }
    /// Within which the sums of equal definitions are: what their numbers differ by, and what adding rounds off.
    double tolerance() const { return 1e-11 * count + 1e-12 * count * count; }

    double sum = 0.0;
    bool isKnown = true; ///< else one of them is none: such a definition equals none, not even itself

private:
    void take(const C3DPoint& point)
    {
        for (const double value : {point.x, point.y, point.z})
            take(value);
    }
    void take(double value)
    {
        isKnown = isKnown && !std::isnan(value);
        weight += 0.6180339887498949;
        if (weight >= 2.0)
            weight -= 1.0;
        sum += weight * sizeOf(value);
        count += 1.0;
    }

    double weight = 1.0;
    double count = 0.0;
};

void CDefinitionIndex::add(CParticleType& type)
{
    const SMeasure measure(type);
    const SEntry entry{added++, &type};
    if (measure.isKnown)
        byMeasure[Key(type.displayName, type.materialName, type.spheres.size())].emplace(measure.sum, entry);
}

CParticleType* CDefinitionIndex::find(const CParticleType& wanted) const
{
    const auto sameNames = byMeasure.find(Key(wanted.displayName, wanted.materialName, wanted.spheres.size()));
    const SMeasure measure(wanted);
    if (sameNames == byMeasure.end() || !measure.isKnown)
        return nullptr;
    const double end = measure.sum + measure.tolerance();
    const SEntry* first = nullptr;
    const auto& candidates = sameNames->second;
    for (auto i = candidates.lower_bound(measure.sum - measure.tolerance()); i != candidates.end() && i->first <= end;
         ++i)
        if ((first == nullptr || i->second.order < first->order) && i->second.type->sameDefinition(wanted))
            first = &i->second;
    return first == nullptr ? nullptr : first->type;
}

} // namespace NBrenmark::NLegacySupport
