#pragma once
// The three roles of the applications that edit a deck. Each owns one top-level key of the configuration tree. A
// conversion has them registered so that the tree passes through it whole: what a deck's file doesn't hold gets its
// default (config/role_keys.h), and what no role knows is carried as it is.

#include "config/config_manager.h"
#include "config/role_keys.h"

#include <QObject>
#include <memory>
#include <optional>
#include <string>

namespace NBrenmark {

class CZorvBase : public QObject, public NConfig::IConfigurable
{
public:
    ~CZorvBase() override = default;

    /// Reads the role's own keys, then those of its parts; what has no value gets its default.
    /// \throws CConfigException  a value of another kind than its default; what was read before it stays
    bool loadConfiguration(NConfig::CConfigManager& manager) override;
    /// Nothing if keepTree is true; else reads the keys again, which refills an emptied tree.
    bool resetConfiguration(bool keepTree, NConfig::CConfigManager& manager) override;

    /// On the role's key; null before the first load.
    const NConfig::CConfigHandle* configuration() const { return handle.get(); }

protected:
    /// Registers with the manager, for as long as both live.
    CZorvBase(NConfig::CConfigManager& manager, std::string key);

    /// Makes the handle anew, which creates the role's key.
    const NConfig::CConfigHandle& bind(NConfig::CConfigManager& manager);
    virtual void readOwnKeys(const NConfig::CConfigHandle& role) = 0;
    virtual void readParts(const NConfig::CConfigHandle& role) = 0;

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

private:
    void readOwnKeys(const NConfig::CConfigHandle& role) override;
    void readParts(const NConfig::CConfigHandle& role) override;
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

    /// What the application is to store of a timestep, by the keys that were read last.
    const SSelectiveSave& selectiveSave() const { return masks; }

private:
    void readOwnKeys(const NConfig::CConfigHandle& role) override;
    void readParts(const NConfig::CConfigHandle& role) override;

    SSelectiveSave masks = defaultSelectiveSave;
};

/// "ANALYST"
class CAnalyst : public CZorvBase
{
public:
    explicit CAnalyst(NConfig::CConfigManager& manager);
    /// Its parts are brought back to their defaults, too.
    bool resetConfiguration(bool keepTree, NConfig::CConfigManager& manager) override;

private:
    void readOwnKeys(const NConfig::CConfigHandle& role) override;
    void readParts(const NConfig::CConfigHandle& role) override;
};

/// The roles of a process. They lie in one object, for a manager calls what is registered by its address: a tree is
/// filled in the same order in every process.
struct SApplicationRoles
{
    explicit SApplicationRoles(NConfig::CConfigManager& manager);

    CCreator creator;
    std::optional<CProcessor> processor; ///< not if the process has its own
    CAnalyst analyst;
};

} // namespace NBrenmark
