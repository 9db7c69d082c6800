// Fills the keys of the three roles into the tree, each with its default where the deck has none.
#include "config/application_roles.h"

#include <utility>

namespace NBrenmark {

using NConfig::CConfigHandle;
using NConfig::CConfigManager;
using NConfig::CKeyPath;

CZorvBase::CZorvBase(CConfigManager& manager, std::string key)
    : registration(manager.registerConfigurable(*this)), key(std::move(key))
{}

const CConfigHandle& CZorvBase::bind(CConfigManager& manager)
{
    handle = manager.handle(CKeyPath::fromString(key), true);
    return *handle;
}

bool CZorvBase::loadConfiguration(CConfigManager& manager)
{
    const CConfigHandle& role = bind(manager);
    readOwnKeys(role);
    readParts(role);
    return true;
}

bool CZorvBase::resetConfiguration(bool keepTree, CConfigManager& manager)
{
    if (!keepTree)
        readOwnKeys(bind(manager));
    return true;
}

// ---------------------------------------------------------------- creator

CCreator::CCreator(CConfigManager& manager) : CZorvBase(manager, "CREATOR") {}

void CCreator::readOwnKeys(const CConfigHandle& role) { fillKeys(role, creatorKeys()); }

void CCreator::readParts(const CConfigHandle& role) { fillKeys(role, viewKeys()); }

// ---------------------------------------------------------------- processor

static CProcessor* processProcessor = nullptr;

CProcessor::CProcessor(CConfigManager& manager) : CZorvBase(manager, "PROCESSOR") { processProcessor = this; }

CProcessor::~CProcessor()
{
    if (processProcessor == this)
        processProcessor = nullptr;
}

CProcessor* CProcessor::current() { return processProcessor; }

void CProcessor::readOwnKeys(const CConfigHandle& role)
{
    fillKeys(role, processorKeys(NConfig::versionNumber(role.manager().fileVersion())));
    SSelectiveSave read = defaultSelectiveSave;
    for (const SSelectiveSaveKey& entry : selectiveSaveKeys()) {
        const bool isOn = (defaultSelectiveSave.*entry.mask & entry.bit) != 0;
        if (role.value<bool>(CKeyPath::fromString(entry.key), isOn))
            read.*entry.mask |= entry.bit;
        else
            read.*entry.mask &= ~entry.bit;
    }
    masks = read;
}

void CProcessor::readParts(const CConfigHandle& role) { fillKeys(role, viewKeys()); }

// ---------------------------------------------------------------- analyst

CAnalyst::CAnalyst(CConfigManager& manager) : CZorvBase(manager, "ANALYST") {}

void CAnalyst::readOwnKeys(const CConfigHandle& role) { fillKeys(role, analystKeys()); }

void CAnalyst::readParts(const CConfigHandle& role) { fillKeys(role, analystParts()); }

bool CAnalyst::resetConfiguration(bool keepTree, CConfigManager& manager)
{
    return keepTree || loadConfiguration(manager);
}

// ---------------------------------------------------------------- all

SApplicationRoles::SApplicationRoles(CConfigManager& manager) : creator(manager), analyst(manager)
{
    if (!CProcessor::current())
        processor.emplace(manager);
}

} // namespace NBrenmark
