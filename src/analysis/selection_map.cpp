// Reads and writes the block of selections, and checks that what it writes can be cut again by the next reader.
#include "analysis/selection_map.h"

#include "analysis/progress_step.h"
#include "analysis/region_selections.h"
#include "analysis/selection_block.h"
#include "analysis/selection_kinds.h"
#include "core/log.h"
#include "core/versioned_stream.h"

#include <QDataStream>
#include <QIODevice>
#include <QtEndian>

#include <algorithm>
#include <optional>
#include <stdexcept>
#include <utility>
#include <vector>

namespace NBrenmark::NSelection {

static constexpr int countBytes = 4;

/// Type identifier, two names and a flag: no selection is smaller.
static constexpr int leastSelectionBytes = 3 * 4 + 1;

static std::string particleDisplayOf(const std::string& selection) { return selection + " Particles"; }
static std::string contactDisplayOf(const std::string& selection) { return selection + " Contacts"; }

static constexpr SLogTitle title{"Selection", eCauseInternal};

static void tell(const std::string& text) { report(eRemark, title, text); }

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
    carriedOnes.clearHome();
    setModified(notify);
    if (notify)
        Q_EMIT cleared();
}

// ---------------------------------------------------------------- the block

std::vector<SSelectionPiece> CSelectionMap::storedPieces() const
{
    std::vector<SSelectionPiece> stored;
    for (const auto& [name, selection] : byName)
        if (!selection->isSubSelection())
            stored.push_back({selection->typeId(), QString::fromStdString(name), writtenRecord(*selection), {}});
    for (const SCarriedSelection& carried : carriedOnes.selections())
        if (carried.isAtHome)
            stored.push_back({carried.typeId, carried.name, carried.bytes, {}});
    std::stable_sort(stored.begin(), stored.end(), [](const SSelectionPiece& a, const SSelectionPiece& b) {
        return a.name.toStdString() < b.name.toStdString();
    });
    return stored;
}

/// The block from the first selection's class on.
static QByteArray blockOf(const std::vector<SSelectionPiece>& pieces)
{
    QByteArray block;
    QDataStream stream(&block, QIODevice::WriteOnly);
    for (const SSelectionPiece& piece : pieces) {
        stream << piece.typeId << piece.name;
        stream.writeRawData(piece.record.constData(), piece.record.size());
    }
    return block;
}

/// Whether the block of these pieces would be cut into them again.
static bool areCutAgain(const std::vector<SSelectionPiece>& pieces)
{
    const auto again = cutSelections(blockOf(pieces), static_cast<qint32>(pieces.size()), currentFileVersion(), 0);
    return again && std::equal(pieces.begin(), pieces.end(), again->begin(), again->end(),
                               [](const SSelectionPiece& a, const SSelectionPiece& b) { return a.record == b.record; });
}

bool CSelectionMap::write(CVersionedStream& stream, IProgressController* progress)
{
    const std::vector<SSelectionPiece> stored = storedPieces();
    CProgressStep step(progress, static_cast<int>(stored.size()), QStringLiteral("Writing Selections"));
    stream << qint32(stored.size());
    for (const SSelectionPiece& piece : stored) {
        if (step.isCancelled())
            return false;
        stream << piece.typeId << piece.name;
        stream.writeRawData(piece.record.constData(), piece.record.size());
        step.tick();
    }
    setModified(false);
    return stream.status() == QDataStream::Ok;
}

/// Null if a selection, or what would be written of it, can't be taken apart in one way alone.
std::unique_ptr<CSelection> CSelectionMap::takenApart(const SSelectionPiece& piece, quint32 version, quint32 edition)
{
    std::unique_ptr<CSelection> selection = createSelection(piece.typeId, piece.name.toStdString());
    if (selection == nullptr || !piece.display)
        return nullptr;
    readRecord(*selection, piece.record, *piece.display, version, edition);
    const QByteArray written = writtenRecord(*selection);
    CDisplayOptions particle, contact;
    const auto scratch = NSelection::createSelection(piece.typeId, std::string(), particle, contact);
    const std::optional<SDisplayPart> again = displayOf(*scratch, written, currentFileVersion(), 0);
    return again && again->end - again->begin == selection->particleDisplay.bytes.size() ? std::move(selection)
                                                                                         : nullptr;
}

void CSelectionMap::carryWhole(SCarriedSelection selection, const std::string& cause)
{
    report(eCarriedUnread, NLogTitle::settings,
           cause + " Its " + std::to_string(selection.bytes.size()) + " bytes, of version " +
               versionText(selection.version).toStdString() + ", are carried along unread.",
           1, selection.name.toStdString());
    carriedOnes.add(std::move(selection));
}

bool CSelectionMap::read(CVersionedStream& stream, IProgressController* progress)
{
    clear(true);
    const quint32 version = stream.fileVersion();
    const quint32 edition = stream.edition;
    const QByteArray payload = stream.device()->read(stream.bytesLeft());
    if (payload.size() < countBytes)
        throw std::length_error("the selections end early");
    const auto count = qFromBigEndian<qint32>(payload.constData());
    CProgressStep step(progress, qMax(count, 0), QStringLiteral("Reading Selections"));
    std::optional<std::vector<SSelectionPiece>> pieces;
    if (count == 0 && payload.size() == countBytes)
        pieces.emplace();
    else if (count > 0 && count <= (payload.size() - countBytes) / leastSelectionBytes)
        pieces = cutSelections(payload.mid(countBytes), count, version, edition);
    const auto carryBlock = [&] {
        const std::string announced = std::to_string(count) + " selections announced";
        if (stream.limit() < 0)
            throw std::length_error(announced + ", in a block whose end can't be found");
        carryWhole({QString(), QString(), version, edition, payload, false},
                   announced + ", and nothing says where each of them begins.");
    };
    if (!pieces) {
        carryBlock();
        pieces.emplace();
    }
    for (const SSelectionPiece& piece : *pieces) {
        const std::string name = piece.name.toStdString();
        const std::string shown = "Selection \"" + name + "\" (" + piece.typeId.toStdString() + ")";
        const bool isNamed = QString::fromStdString(name) == piece.name;
        const bool isToday = version == currentFileVersion() && edition == 0;
        std::unique_ptr<CSelection> selection;
        std::string cause;
        bool isAtHome = false;
        if (contains(name) || !isNamed)
            cause = shown + (isNamed ? " has the name of an earlier one." : " has a name that is no text.");
        else if (!selectionTypeIds().contains(piece.typeId))
            cause = shown + " is of a class that isn't known here.";
        else if (selection = takenApart(piece, version, edition); selection == nullptr) {
            cause = shown + ": nothing tells where its display options end.";
            isAtHome = isToday;
        }
        if (selection != nullptr)
            byName.emplace(name, std::move(selection));
        else
            carryWhole({piece.typeId, piece.name, version, edition, piece.record, isAtHome}, cause);
        if (step.isCancelled()) {
            clear(true);
            carriedOnes.clear(true);
            return false;
        }
        step.tick();
    }
    // What is written has to be found again by the next one who reads it.
    if (const std::vector<SSelectionPiece> stored = storedPieces(); !stored.empty() && !areCutAgain(stored)) {
        clear(true);
        carriedOnes.clear(true);
        carryBlock();
    }
    setModified(false);
    return true;
}

} // namespace NBrenmark::NSelection
