#include "config/application_roles.h"

#include <utility>

namespace NBrenmark {

CZorvBase::CZorvBase(NConfig::CConfigManager& manager, std::string key)
    : registration(manager.registerConfigurable(*this)), key(std::move(key))
{}

bool CZorvBase::loadConfiguration(NConfig::CConfigManager& manager)
{
    handle = manager.handle(NConfig::CKeyPath::fromString(key), true);
    return true;
}

bool CZorvBase::resetConfiguration(bool keepTree, NConfig::CConfigManager& manager)
{
    return keepTree || loadConfiguration(manager);
}

CCreator::CCreator(NConfig::CConfigManager& manager) : CZorvBase(manager, "CREATOR") {}

CAnalyst::CAnalyst(NConfig::CConfigManager& manager) : CZorvBase(manager, "ANALYST") {}

static CProcessor* processProcessor = nullptr;

CProcessor::CProcessor(NConfig::CConfigManager& manager) : CZorvBase(manager, "PROCESSOR") { processProcessor = this; }

CProcessor::~CProcessor()
{
    if (processProcessor == this)
        processProcessor = nullptr;
}

CProcessor* CProcessor::current() { return processProcessor; }

} // namespace NBrenmark
