#pragma once
// Particle types by their definition. Two definitions are one within the rounding of a rescaled template, so that no key
// is exact: a type is looked for among those whose measure is near.

#include <QString>

#include <map>
#include <tuple>
#include <vector>

namespace NBrenmark {

class CParticleType;

namespace NLegacySupport {

class CDefinitionIndex
{
public:
    /// \param type  must stay where it is, with this definition
    void add(CParticleType& type);
    /// The one that was added first of those with that definition, or null.
    CParticleType* find(const CParticleType& wanted) const;

private:
    struct SEntry
    {
        quint32 order;
        CParticleType* type;
    };
    using Key = std::tuple<QString, QString, std::size_t>; // name, material, spheres: what is compared exactly

    std::map<Key, std::multimap<double, SEntry>> byMeasure;
    quint32 added = 0;
};

} // namespace NLegacySupport
} // namespace NBrenmark
