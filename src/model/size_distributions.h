#pragma once
// Which share of the particles of a mix gets which size law.

#include "model/factories/size_distribution_kinds.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace NBrenmark {

class IFileVisitorReader;
class IFileVisitorWriter;

struct SParticleDistribution
{
    double percentage = 0.0;                         ///< 0 to 100, of the types of a material
    std::unique_ptr<ISizeDistribution> distribution; ///< null: no law
};

/// By the name of the particle type, in byte order.
class CParticleSizeDistributionMap
{
public:
    void read(IFileVisitorReader& visitor);
    void write(IFileVisitorWriter& visitor) const;

    /// Inserts when the name is absent; an existing entry stays, and distribution with the caller.
    bool add(const std::string& name, double percentage, std::unique_ptr<ISizeDistribution>& distribution);
    /// Null when the name is absent.
    ISizeDistribution* findDistribution(const std::string& name) const;
    /// 0 when the name is absent.
    double percentageOf(const std::string& name) const;
    /// Each named entry that exists gets 100 divided by the number of names.
    void setEqualShares(const std::vector<std::string>& names);
    void clear() { entries.clear(); }

    std::map<std::string, SParticleDistribution> entries;
};

} // namespace NBrenmark
