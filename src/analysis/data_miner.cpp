// Finds the queries of a data export below its key and takes them over.
#include "analysis/data_miner.h"

#include <utility>

namespace NBrenmark {

CSimDataMiner::CSimDataMiner(std::unique_ptr<NConfig::CConfigHandle> handle) : configuration(std::move(handle))
{
    const NConfig::CKeyPath below(configuration->basePath(), NConfig::CKeyPath::fromString("QUERIES"));
    NConfig::CConfigHandle place(configuration->manager(), below);
    map.readConfiguration(place);
}

bool CDataMiners::loadConfiguration(NConfig::CConfigManager& manager)
{
    list.clear();
    const NConfig::CKeyPath exports = NConfig::CKeyPath::fromString("ANALYST:DATA EXPORT");
    for (const NConfig::CKeyPath& name : manager.childKeys(exports)) {
        const NConfig::CKeyPath place(NConfig::CKeyPath(exports, name), NConfig::CKeyPath::fromString("DATA MINER"));
        if (auto handle = manager.handle(place, false))
            list.push_back(std::make_unique<CSimDataMiner>(std::move(handle)));
    }
    return true;
}

bool CDataMiners::resetConfiguration(bool, NConfig::CConfigManager&)
{
    list.clear();
    return true;
}

} // namespace NBrenmark
