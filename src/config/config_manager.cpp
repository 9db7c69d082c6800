// The tree, its handles, and who is notified when it changes.
#include "config/config_manager.h"

#include "core/log.h"

#include <algorithm>
#include <utility>

namespace NBrenmark::NConfig {

quint32 versionNumber(const std::string& versionText)
{
    quint32 sections[3] = {0, 0, 0};
    size_t section = 0;
    for (const char c : versionText) {
        if (c == '.') {
            if (++section == 3)
                break;
        }
        else if (c >= '0' && c <= '9') {
            const quint32 largest = section == 0 ? 0xFFFF : 0xFF;
            sections[section] = std::min(sections[section] * 10 + quint32(c - '0'), largest);
        }
        else
            break;
    }
    return (sections[0] << 16) | (sections[1] << 8) | sections[2];
}

CConfigHandle::CConfigHandle(CConfigManager& manager, CKeyPath basePath) : owner(&manager), base(std::move(basePath)) {}

CConfigManager::CConfigManager()
    : configurables(std::make_shared<std::set<IConfigurable*>>()), fileVersionText(programVersionText)
{}

CConfigManager::~CConfigManager() = default;

SConfigNode* CConfigManager::findNode(const CKeyPath& keyPath, bool create)
{
    if (create && keyPath.elements().size() > greatestDepth)
        return nullptr;
    SConfigNode* node = &root;
    for (const std::string& element : keyPath.elements()) {
        if (create) {
            node = &node->children[element];
            continue;
        }
        const auto child = node->children.find(element);
        if (child == node->children.end())
            return nullptr;
        node = &child->second;
    }
    return node;
}

std::unique_ptr<CConfigHandle> CConfigManager::handle(const CKeyPath& keyPath, bool create)
{
    if (!findNode(keyPath, create))
        return nullptr;
    return std::make_unique<CConfigHandle>(*this, keyPath);
}

std::unique_ptr<CConfigHandle> CConfigManager::rootHandle()
{
    return std::make_unique<CConfigHandle>(*this, CKeyPath());
}

std::any& CConfigManager::valueOfAnyKind(const CKeyPath& keyPath, const std::any& defaultValue)
{
    SConfigNode* const node = keyPath.isEmpty() ? nullptr : findNode(keyPath, true);
    if (!node)
        throw CConfigException(eKeyPathNotValid, keyPath);
    if (!node->value.has_value())
        node->value = defaultValue;
    if (node->value.type() != defaultValue.type())
        throw CConfigException(eValueOfDifferentType, keyPath);
    return node->value;
}

std::any& CConfigManager::nodeValue(const CKeyPath& keyPath)
{
    SConfigNode* const node = keyPath.isEmpty() ? nullptr : findNode(keyPath, false);
    if (!node)
        throw CConfigException(eKeyPathNotValid, keyPath);
    return node->value;
}

void CConfigManager::clearValue(const CKeyPath& keyPath)
{
    if (SConfigNode* const node = findNode(keyPath, false))
        node->value.reset();
}

std::set<CKeyPath> CConfigManager::childKeys(const CKeyPath& keyPath)
{
    std::set<CKeyPath> keys;
    if (const SConfigNode* const node = findNode(keyPath, false))
        for (const auto& child : node->children)
            keys.insert(CKeyPath(std::vector<std::string>{child.first}));
    return keys;
}

std::unique_ptr<CConfigHandle> CConfigManager::createUniqueChild(const CKeyPath& keyPath)
{
    SConfigNode* const parent = keyPath.elements().size() < greatestDepth ? findNode(keyPath, true) : nullptr;
    if (!parent)
        throw CConfigException(eKeyPathNotValid, keyPath);
    for (unsigned long number = 1;; ++number) {
        std::string element = std::to_string(number);
        if (element.size() < 5)
            element.insert(0, 5 - element.size(), '0');
        if (parent->children.emplace(element, SConfigNode()).second)
            return std::make_unique<CConfigHandle>(*this, keyPath.child(element));
    }
}

void CConfigManager::removeKey(const CKeyPath& keyPath)
{
    if (keyPath.isEmpty())
        return;
    std::vector<std::string> parentPath = keyPath.elements();
    parentPath.pop_back();
    if (SConfigNode* const parent = findNode(CKeyPath(std::move(parentPath)), false))
        parent->children.erase(keyPath.elements().back());
}

CConfigManager::CRegistration CConfigManager::registerConfigurable(IConfigurable& configurable)
{
    return CRegistration(configurables, configurable);
}

template <class TCall>
bool CConfigManager::forAll(const char* failure, TCall&& call)
{
    bool result = true;
    try {
        // A copy: an object that is called may make or end others.
        const std::set<IConfigurable*> all = *configurables;
        for (IConfigurable* const configurable : all)
            if (configurables->count(configurable) && !call(*configurable))
                result = false;
    }
    catch (const CConfigException& error) {
        reportFailure(NLogTitle::configuration, std::string(failure) + " " + error.what(), eCauseSource);
        result = false;
    }
    return result;
}

bool CConfigManager::loadAll()
{
    return forAll("Failed to load config.",
                  [this](IConfigurable& configurable) { return configurable.loadConfiguration(*this); });
}

bool CConfigManager::resetAll(bool keepTree)
{
    root.children.clear();
    return forAll("Failed to clear config.",
                  [&](IConfigurable& configurable) { return configurable.resetConfiguration(keepTree, *this); });
}

CConfigManager::CRegistration::CRegistration(const std::shared_ptr<std::set<IConfigurable*>>& configurables,
                                             IConfigurable& configurable)
    : place(configurables), registered(&configurable)
{
    configurables->insert(&configurable);
}

CConfigManager::CRegistration::CRegistration(CRegistration&& other) noexcept
    : place(std::move(other.place)), registered(std::exchange(other.registered, nullptr))
{}

CConfigManager::CRegistration& CConfigManager::CRegistration::operator=(CRegistration&& other) noexcept
{
    if (this != &other) {
        giveUp();
        place = std::move(other.place);
        registered = std::exchange(other.registered, nullptr);
    }
    return *this;
}

CConfigManager::CRegistration::~CRegistration() { giveUp(); }

void CConfigManager::CRegistration::giveUp()
{
    if (const auto configurables = place.lock())
        configurables->erase(registered);
}

} // namespace NBrenmark::NConfig
