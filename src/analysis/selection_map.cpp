// The selections by name, with the elements of regions and the display options that go with each.
#include "analysis/selection_map.h"

#include "analysis/region_selections.h"
#include "analysis/selection_kinds.h"
#include "core/log.h"
#include "visitors/settings_streams.h"

#include <utility>
namespace NBrenmark::NSelection {

static std::string particleDisplayOf(const std::string& selection) { return selection + " Particles"; }
static std::string contactDisplayOf(const std::string& selection) { return selection + " Contacts"; }

static constexpr SLogTitle title{"Selection", eCauseInternal};

static void remark(const std::string& text) { report(eRemark, title, text); }

CSelectionMap::CSelectionMap() = default;
CSelectionMap::~CSelectionMap() = default;

// ---------------------------------------------------------------- the selections

std::unique_ptr<CSelection> CSelectionMap::createSelection(const QString& typeId, const std::string& name)
{
    return NSelection::createSelection(typeId, name, displays.options(particleDisplayOf(name)),
                                       displays.options(contactDisplayOf(name)));
}

bool CSelectionMap::add(std::unique_ptr<CSelection>& selection)
{
    if (selection == nullptr || contains(selection->name))
        return false;
    const std::string name = selection->name;
    byName.emplace(name, std::move(selection));
    setModified(true);
    return true;
}

CSelection* CSelectionMap::createSubSelection(CGeometricRegionSelection& region, const std::string& name, int element)
{
    if (contains(name)) {
        remark("Could not create sub-selection (name in use): " + name);
        return nullptr;
    }
    auto made = std::make_unique<CGeometricRegionElementSelection>(
        name, displays.options(particleDisplayOf(name)), displays.options(contactDisplayOf(name)), region, element);
    return byName.emplace(name, std::move(made)).first->second.get();
}

CSelection* CSelectionMap::selection(const std::string& name) const
{
    const auto found = byName.find(name);
    return found == byName.end() ? nullptr : found->second.get();
}

int CSelectionMap::count(bool includeSubSelections) const
{
    int count = 0;
    for (const auto& [name, selection] : byName)
        if (includeSubSelections || !selection->isSubSelection())
            ++count;
    return count;
}

bool CSelectionMap::rename(const std::string& oldName, const std::string& newName)
{
    if (newName.empty() || !contains(oldName)) {
        remark(newName.empty() ? "Selection name is not valid" : "Could not rename selection: " + oldName);
        return false;
    }
    if (contains(newName)) {
        remark("Cannot rename " + oldName + ". The name " + newName + " is already in use.");
        return false;
    }
    displays.rename(particleDisplayOf(oldName), particleDisplayOf(newName));
    displays.rename(contactDisplayOf(oldName), contactDisplayOf(newName));
    auto entry = byName.extract(oldName);
    entry.key() = newName;
    entry.mapped()->name = newName;
    byName.insert(std::move(entry));
    setModified(true);
    return true;
}

bool CSelectionMap::remove(const std::string& name)
{
    const auto found = byName.find(name);
    if (found == byName.end())
        return false;
    const CSelection* const removed = found->second.get();
    for (auto entry = byName.begin(); entry != byName.end();) {
        const auto* const element = dynamic_cast<const CGeometricRegionElementSelection*>(entry->second.get());
        if (entry->second.get() != removed && (element == nullptr || &element->region != removed)) {
            ++entry;
            continue;
        }
        const std::string gone = entry->first;
        if (entry->second.get() == removed)
            ++entry; // the region goes last: its elements know it
        else
            entry = byName.erase(entry);
        displays.remove(particleDisplayOf(gone));
        displays.remove(contactDisplayOf(gone));
    }
    byName.erase(found);
    setModified(true);
    return true;
}

void CSelectionMap::clear(bool notify)
{
    byName.clear();
    displays.clear();
    carriedOnes.clearHome();
    setModified(notify);
    if (notify)
        Q_EMIT cleared();
}

// ---------------------------------------------------------------- the block

bool CSelectionMap::write(CVersionedStream& stream, IProgressController* progress)
{
    return NSettingsFamily::write(stream, *this, progress);
}

bool CSelectionMap::read(CVersionedStream& stream, IProgressController* progress)
{
    return NSettingsFamily::read(stream, *this, progress);
}

} // namespace NBrenmark::NSelection
