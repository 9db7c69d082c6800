// The fields by name and by number.
#include "analysis/field_manager.h"

#include "visitors/settings_streams.h"

#include <limits>
#include <utility>

namespace NBrenmark::NField {

/// As noId, a field asks for a number by it.
static constexpr qint32 anyId = -2;

CFieldManager::CFieldManager() = default;
CFieldManager::~CFieldManager() = default;

// ---------------------------------------------------------------- the fields

bool CFieldManager::addField(std::unique_ptr<CFieldData>& field)
{
    if (field == nullptr || byName.count(field->name) > 0)
        return false;
    const bool isNumbered = field->id != CFieldData::noId && field->id != anyId;
    const qint32 id = isNumbered ? field->id : nextId;
    if (byId.count(id) > 0)
        return false;
    field->id = id;
    if (id >= nextId && id < std::numeric_limits<qint32>::max())
        nextId = id + 1;
    const std::string name = field->name;
    byId.emplace(id, field.get());
    byName.emplace(name, std::move(field));
    setModified(true);
    Q_EMIT fieldAdded(name);
    return true;
}

bool CFieldManager::deleteField(const std::string& name)
{
    const auto found = byName.find(name);
    if (found == byName.end())
        return false;
    const auto entry = byName.extract(found); // goes last: the name may be the field's own
    byId.erase(entry.mapped()->id);
    setModified(true);
    Q_EMIT fieldDeleted(entry.key());
    return true;
}

bool CFieldManager::renameField(const std::string& oldName, const std::string& newName)
{
    const auto found = byName.find(oldName);
    if (found == byName.end() || newName.empty() || byName.count(newName) > 0)
        return false;
    auto entry = byName.extract(found);
    const std::string before = entry.key(); // oldName may be the field's own
    entry.key() = newName;
    entry.mapped()->name = newName;
    byName.insert(std::move(entry));
    setModified(true);
    Q_EMIT fieldRenamed(before, newName);
    return true;
}

bool CFieldManager::rebuildIdMap()
{
    byId.clear();
    bool areDifferent = true;
    for (const auto& [name, field] : byName)
        areDifferent = byId.insert_or_assign(field->id, field.get()).second && areDifferent;
    return areDifferent;
}

CFieldData* CFieldManager::getField(qint32 id) const
{
    const auto found = byId.find(id);
    return found == byId.end() ? nullptr : found->second;
}

CFieldData* CFieldManager::getField(const std::string& name) const
{
    const auto found = byName.find(name);
    return found == byName.end() ? nullptr : found->second.get();
}

void CFieldManager::clear(bool notify)
{
    byId.clear();
    byName.clear();
    nextId = 0;
    setModified(notify);
    Q_EMIT cleared();
}

// ---------------------------------------------------------------- the block

bool CFieldManager::write(CVersionedStream& stream, IProgressController* progress)
{
    return NSettingsFamily::write(stream, *this, progress);
}

bool CFieldManager::read(CVersionedStream& stream, IProgressController* progress)
{
    return NSettingsFamily::read(stream, *this, progress);
}

} // namespace NBrenmark::NField
