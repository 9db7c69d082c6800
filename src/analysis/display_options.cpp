// Drawing records by the name of their selection.
#include "analysis/display_options.h"

#include <utility>

namespace NBrenmark {

void CDisplayOptionManager::rename(const std::string& oldName, const std::string& newName)
{
    auto entry = byName.extract(oldName);
    if (entry.empty())
        return;
    byName.erase(newName);
    entry.key() = newName;
    byName.insert(std::move(entry));
}

CDisplayOptions& CDisplayOptionManager::options(const std::string& name)
{
    std::unique_ptr<CDisplayOptions>& entry = byName[name];
    if (entry == nullptr)
        entry = std::make_unique<CDisplayOptions>();
    return *entry;
}

} // namespace NBrenmark
