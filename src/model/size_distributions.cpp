// Shares by the name of the particle type.
#include "model/size_distributions.h"

#include "visitors/file_visitor_reader.h"
#include "visitors/file_visitor_writer.h"

namespace NBrenmark {

void CParticleSizeDistributionMap::read(IFileVisitorReader& v) { v.readParticleSizeDistributionMap(*this); }

void CParticleSizeDistributionMap::write(IFileVisitorWriter& v) const { v.writeParticleSizeDistributionMap(*this); }

bool CParticleSizeDistributionMap::add(const std::string& name, double percentage,
                                       std::unique_ptr<ISizeDistribution>& distribution)
{
    if (entries.count(name) > 0)
        return false;
    entries[name] = SParticleDistribution{percentage, std::move(distribution)};
    return true;
}

ISizeDistribution* CParticleSizeDistributionMap::findDistribution(const std::string& name) const
{
    const auto entry = entries.find(name);
    return entry != entries.end() ? entry->second.distribution.get() : nullptr;
}

double CParticleSizeDistributionMap::percentageOf(const std::string& name) const
{
    const auto entry = entries.find(name);
    return entry != entries.end() ? entry->second.percentage : 0.0;
}

void CParticleSizeDistributionMap::setEqualShares(const std::vector<std::string>& names)
{
    for (const std::string& name : names) {
        const auto entry = entries.find(name);
        if (entry != entries.end())
            entry->second.percentage = 100.0 / static_cast<double>(names.size());
    }
}

} // namespace NBrenmark
