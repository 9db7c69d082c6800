#include "analysis/selection_map.h"

#include "analysis/progress_step.h"
#include "analysis/region_selections.h"
#include "analysis/selection_kinds.h"
#include "core/log.h"
#include "core/versioned_stream.h"

#include <QDataStream>
#include <QIODevice>

#include <stdexcept>
#include <utility>

namespace NBrenmark::NSelection {

/// Type identifier, two names and a flag: no selection is smaller.
static constexpr qint64 leastSelectionBytes = 3 * 4 + 1;

static std::string particleDisplayOf(const std::string& selection) { return selection + " Particles"; }
static std::string contactDisplayOf(const std::string& selection) { return selection + " Contacts"; }

static void tell(const std::string& text) { logMessage(eWarning, "Selection", text); }

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

CSelection* CSelectionMap::createSubSelection(CGeometricRegionSelection& region, const std::string& name)
{
    if (contains(name)) {
        tell("Could not create sub-selection (name in use): " + name);
        return nullptr;
    }
    auto element = std::make_unique<CGeometricRegionElementSelection>(name, displays.options(particleDisplayOf(name)),
                                                                      displays.options(contactDisplayOf(name)), region);
    return byName.emplace(name, std::move(element)).first->second.get();
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
        tell(newName.empty() ? "Selection name is not valid" : "Could not rename selection: " + oldName);
        return false;
    }
    if (contains(newName)) {
        tell("Cannot rename " + oldName + ". The name " + newName + " is already in use.");
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
    setModified(notify);
    if (notify)
        Q_EMIT cleared();
}

// ---------------------------------------------------------------- the block

bool CSelectionMap::write(QDataStream& stream, IProgressController* progress)
{
    const int stored = count(false);
    CProgressStep step(progress, stored, QStringLiteral("Writing Selections"));
    stream << qint32(stored);
    for (const auto& [name, selection] : byName) {
        if (selection->isSubSelection())
            continue;
        if (step.isCancelled())
            return false;
        stream << selection->typeId() << QString::fromStdString(name);
        if (!selection->write(stream, progress))
            return false;
        step.tick();
    }
    setModified(false);
    return stream.status() == QDataStream::Ok;
}

/// One selection, with its class and name in front. False, told in the log, for one that the map can't take.
bool CSelectionMap::readSelection(QDataStream& stream, IProgressController* progress)
{
    QString typeId, shownName;
    stream >> typeId >> shownName;
    if (stream.status() != QDataStream::Ok)
        throw std::runtime_error("the selections end early");
    const std::string name = shownName.toStdString();
    if (contains(name)) {
        tell("Could not add selection to system (possible corrupt data with duplicate names): " + name);
        return false;
    }
    std::unique_ptr<CSelection> selection = createSelection(typeId, name);
    if (selection == nullptr) {
        tell("Could not create selection (Unknown ID): " + typeId.left(80).toStdString());
        return false;
    }
    if (!selection->read(stream, progress))
        return false;
    if (selection->carried && selection->carried->isUnwrapped)
        tell("\"" + name + "\" (" + typeId.toStdString() + "): the layout of its " +
             std::to_string(selection->carried->bytes.size()) + " bytes, of version " +
             versionText(selection->carried->version).toStdString() +
             ", isn't known here. They are carried along unread.");
    byName.emplace(name, std::move(selection));
    setModified(true);
    return true;
}

bool CSelectionMap::read(QDataStream& stream, IProgressController* progress)
{
    clear(true);
    qint32 count = 0;
    stream >> count;
    const qint64 left = bytesLeftOf(stream);
    if (stream.status() != QDataStream::Ok || count < 0 || count > left / leastSelectionBytes)
        throw std::length_error(std::to_string(count) + " selections announced, " + std::to_string(left) +
                                " bytes follow");
    CProgressStep step(progress, count, QStringLiteral("Reading Selections"));
    for (qint32 i = 0; i < count; ++i) {
        if (!readSelection(stream, progress))
            return false;
        if (step.isCancelled()) {
            clear(true);
            return false;
        }
        step.tick();
    }
    setModified(false);
    return true;
}

} // namespace NBrenmark::NSelection
