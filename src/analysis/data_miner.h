#pragma once
// What a data export asks of the results: its queries, as the configuration holds them below the export's
// "DATA MINER". It reads them and asks nothing.

#include "analysis/query_map.h"
#include "config/config_manager.h"

#include <QObject>

#include <memory>
#include <vector>

namespace NBrenmark {

class CSimDataMiner : public QObject
{
    Q_OBJECT
public:
    /// Takes the handle of its place over, and reads the queries below its QUERIES: keys that are missing get their
    /// defaults.
    /// \throws NConfig::CConfigException  a key holds a value of another kind
    explicit CSimDataMiner(std::unique_ptr<NConfig::CConfigHandle> configuration);

    const QueryMap& queries() const { return map; }
    /// Of all queries that were read.
    int queryCount() const { return map.queryCount(); }

private:
    std::unique_ptr<NConfig::CConfigHandle> configuration;
    QueryMap map{eExportQueries};
};

/// Has the miners of all data exports of a tree read their queries, whenever the tree is loaded.
class CDataMiners : public NConfig::IConfigurable
{
public:
    explicit CDataMiners(NConfig::CConfigManager& manager) : registration(manager.registerConfigurable(*this)) {}

    bool loadConfiguration(NConfig::CConfigManager& manager) override;
    bool resetConfiguration(bool keepTree, NConfig::CConfigManager& manager) override;

    const std::vector<std::unique_ptr<CSimDataMiner>>& miners() const { return list; }

private:
    NConfig::CConfigManager::CRegistration registration;
    std::vector<std::unique_ptr<CSimDataMiner>> list;
};

} // namespace NBrenmark
