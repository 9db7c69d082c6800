#pragma once
// The three roles of the applications that edit a deck. Each owns one top-level key of the configuration tree. A
// conversion has them registered so that the tree passes through it; the keys below theirs are carried as they are.

#include "config/config_manager.h"

#include <QObject>
#include <memory>
#include <string>

namespace NBrenmark {

class CZorvBase : public QObject, public NConfig::IConfigurable
{
public:
    ~CZorvBase() override = default;

    bool loadConfiguration(NConfig::CConfigManager& manager) override;
    bool resetConfiguration(bool keepTree, NConfig::CConfigManager& manager) override;

    /// On the role's key; null before the first load.
    const NConfig::CConfigHandle* configuration() const { return handle.get(); }

protected:
    /// Registers with the manager, for as long as both live.
    CZorvBase(NConfig::CConfigManager& manager, std::string key);

private:
    NConfig::CConfigManager::CRegistration registration;
    std::string key;
    std::unique_ptr<NConfig::CConfigHandle> handle;
};

/// "CREATOR"
class CCreator : public CZorvBase
{
public:
    explicit CCreator(NConfig::CConfigManager& manager);
};

/// "PROCESSOR". There is one in a process at most.
class CProcessor : public CZorvBase
{
public:
    /// Becomes the process's own.
    explicit CProcessor(NConfig::CConfigManager& manager);
    ~CProcessor() override;

    /// The process's own; null if there is none.
    static CProcessor* current();
};

/// "ANALYST"
class CAnalyst : public CZorvBase
{
public:
    explicit CAnalyst(NConfig::CConfigManager& manager);
};

} // namespace NBrenmark
