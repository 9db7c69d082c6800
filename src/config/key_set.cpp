// Puts the keys of a set into the tree, each with its default where the file has none, for the elements of lists
// too.
#include "config/key_set.h"

#include "config/config_number.h"

#include <algorithm>

namespace NBrenmark::NConfig {

/// Whether a child is an element of a list, named by CConfigManager::createUniqueChild.
static bool isNumbered(const std::string& element)
{
    return element.size() >= 5 && std::all_of(element.begin(), element.end(), isDigit);
}

void fillKeys(const CConfigHandle& owner, const SKeySet& set)
{
    CConfigManager& manager = owner.manager();
    const CConfigHandle here(manager, CKeyPath(owner.basePath(), CKeyPath::fromString(set.place)));
    for (const SKeyDefault& entry : set.keys) {
        const CKeyPath key(here.basePath(), CKeyPath::fromString(entry.key));
        const SConfigNode* const node = entry.takesAnyKind ? manager.findNode(key, false) : nullptr;
        if (!node || !node->value.has_value())
            manager.valueOfAnyKind(key, entry.value);
    }
    for (const SKeySet& part : set.parts)
        fillKeys(here, part);
    if (set.elements.empty())
        return;
    for (const CKeyPath& child : manager.childKeys(here.basePath()))
        if (isNumbered(child.elements().front()) ||
            (set.hasNamedElements && !manager.childKeys(CKeyPath(here.basePath(), child)).empty()))
            for (const SKeySet& element : set.elements)
                fillKeys(CConfigHandle(manager, CKeyPath(here.basePath(), child)), element);
}

SKeySet placedAt(const std::string& place, SKeySet set)
{
    set.place = place;
    return set;
}

} // namespace NBrenmark::NConfig
