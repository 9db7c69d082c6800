// Particle types by their definition: how near two of them have to be to be one.
#include "legacy/definition_index.h"

#include "model/particle_type.h"

#include <cmath>

namespace NBrenmark::NLegacySupport {

/// One number of all that a definition holds. Each number has a weight of its own, so that different definitions hardly
/// ever have the same; all terms are positive, so that the sum of equal ones differs by no more than they do.
static double measureOf(const CParticleType& type)
{
    double weight = 1.0;
    double sum = 0.0;
    const auto take = [&](double value) {
        sum += weight * std::abs(value);
        weight = weight * 1.6180339887498949;
        if (weight > 1e6)
            weight -= 1e6 - 1.0;
    };
    take(type.rawMass);
    take(type.rawVolume);
    take(type.rawInertia.x);
    take(type.rawInertia.y);
    take(type.rawInertia.z);
    for (const CSphere& sphere : type.spheres) {
        take(sphere.contactRadius);
        take(sphere.physicalRadius);
        take(sphere.position.x);
        take(sphere.position.y);
        take(sphere.position.z);
    }
    return sum;
}

void CDefinitionIndex::add(CParticleType& type)
{
    const double measure = measureOf(type);
    const SEntry entry{added++, &type};
    if (std::isnan(measure)) // equal to none, not even to itself
        return;
    byMeasure[Key(type.displayName, type.materialName, type.spheres.size())].emplace(measure, entry);
}

CParticleType* CDefinitionIndex::find(const CParticleType& wanted) const
{
    const auto sameNames = byMeasure.find(Key(wanted.displayName, wanted.materialName, wanted.spheres.size()));
    const double measure = measureOf(wanted);
    if (sameNames == byMeasure.end() || std::isnan(measure))
        return nullptr;
    // Numbers are equal within 1e-12 of each other or within 1e-40 of nothing; the rest is room for rounding.
    const double tolerance = std::isinf(measure) ? 0.0 : 1e-11 * measure + 1e-30;
    const SEntry* first = nullptr;
    const auto& candidates = sameNames->second;
    for (auto i = candidates.lower_bound(measure - tolerance); i != candidates.end() && i->first <= measure + tolerance;
         ++i)
        if ((first == nullptr || i->second.order < first->order) && i->second.type->sameDefinition(wanted))
            first = &i->second;
    return first == nullptr ? nullptr : first->type;
}

} // namespace NBrenmark::NLegacySupport
