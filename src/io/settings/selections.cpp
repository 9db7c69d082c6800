// The blocks of selections. What is written of them is cut into the same selections again by the next reader, which is
// tried before; what can't be cut, or taken apart, is carried whole.
#include "analysis/progress_step.h"
#include "analysis/selection_kinds.h"
#include "analysis/selection_map.h"
#include "core/log.h"
#include "core/versioned_stream.h"
#include "io/settings/selection_block.h"
#include "visitors/settings_streams.h"

#include <QBuffer>
#include <QtEndian>

#include <algorithm>
#include <optional>
#include <stdexcept>
#include <utility>
#include <vector>

namespace NBrenmark {

using namespace NSelection;

// ---------------------------------------------------------------- one selection

bool NSettingsFamily::read(CVersionedStream& stream, CSelection& selection)
{
    const QByteArray record = stream.device()->read(stream.bytesLeft()); // up to the end of the block
    const auto parts = displayOf(selection, record, stream.fileVersion(), stream.edition);
    if (!parts)
        throw std::runtime_error("Where the display options of a selection end can't be found out.");
    readRecord(selection, record, *parts, stream.fileVersion(), stream.edition);
    return true;
}

// ---------------------------------------------------------------- the block of the selections

static constexpr int countBytes = 4;

/// Type identifier, two names and a flag: no selection is smaller.
static constexpr int leastSelectionBytes = 3 * 4 + 1;

/// What a block holds, in the order of their names.
static std::vector<SSelectionPiece> storedPieces(const CSelectionMap& map)
{
    std::vector<SSelectionPiece> stored;
    for (const auto& [name, selection] : map.selections())
        if (!selection->isSubSelection())
            stored.push_back({selection->typeId(), QString::fromStdString(name), writtenRecord(*selection), {}});
    for (const SCarriedSelection& carried : map.carried().selections())
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
    QBuffer buffer(&block);
    buffer.open(QIODevice::WriteOnly);
    CVersionedStream stream(&buffer);
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

bool NSettingsFamily::write(CVersionedStream& stream, CSelectionMap& map, IProgressController* progress)
{
    const std::vector<SSelectionPiece> stored = storedPieces(map);
    CProgressStep step(progress, static_cast<int>(stored.size()), QStringLiteral("Writing Selections"));
    stream << qint32(stored.size());
    for (const SSelectionPiece& piece : stored) {
        if (step.isCancelled())
            return false;
        stream << piece.typeId << piece.name;
        stream.writeRawData(piece.record.constData(), piece.record.size());
        step.tick();
    }
    map.setModified(false);
    return stream.status() == QDataStream::Ok;
}

/// Null if a selection, or what would be written of it, can't be taken apart in one way alone.
static std::unique_ptr<CSelection> takenApart(CSelectionMap& map, const SSelectionPiece& piece, quint32 version,
                                              quint32 edition)
{
    std::unique_ptr<CSelection> selection = map.createSelection(piece.typeId, piece.name.toStdString());
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

static void carryWhole(CSelectionMap& map, SCarriedSelection selection, const std::string& cause)
{
    report(eCarriedUnread, NLogTitle::settings,
           cause + " Its " + std::to_string(selection.bytes.size()) + " bytes, of version " +
               versionText(selection.version).toStdString() + ", are carried along unread.",
           1, selection.name.toStdString());
    map.carried().add(std::move(selection));
}

bool NSettingsFamily::read(CVersionedStream& stream, CSelectionMap& map, IProgressController* progress)
{
    map.clear(true);
    const quint32 version = stream.fileVersion();
    const quint32 edition = stream.edition; // some layouts grew at other versions in edition 1
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
        carryWhole(map, {QString(), QString(), version, edition, payload, false},
                   announced + ", and nothing says where each of them begins.");
    };
    if (!pieces) {
        carryBlock();
        pieces.emplace();
    }
    for (const SSelectionPiece& piece : *pieces) {
        const std::string name = piece.name.toStdString();
        const std::string shown = "Selection \"" + name + "\" (" + piece.typeId.toStdString() + ")";
        const bool isNamed = QString::fromStdString(name) == piece.name; // no half of a surrogate pair
        // Its bytes may be written back as they are.
        const bool isToday = version == currentFileVersion() && edition == 0;
        std::unique_ptr<CSelection> selection;
        std::string cause;
        bool isAtHome = false;
        if (map.contains(name) || !isNamed)
            cause = shown + (isNamed ? " has the name of an earlier one." : " has a name that isn't text.");
        else if (!selectionTypeIds().contains(piece.typeId))
            cause = shown + " is of a class that isn't known here.";
        else if (selection = takenApart(map, piece, version, edition); selection == nullptr) {
            cause = shown + ": where its display options end can't be found out.";
            isAtHome = isToday;
        }
        if (selection != nullptr)
            map.add(selection);
        else
            carryWhole(map, {piece.typeId, piece.name, version, edition, piece.record, isAtHome}, cause);
        if (step.isCancelled()) {
            map.clear(true);
            map.carried().clear(true);
            return false;
        }
        step.tick();
    }
    // What is written has to be found again by the next one who reads it.
    if (const std::vector<SSelectionPiece> stored = storedPieces(map); !stored.empty() && !areCutAgain(stored)) {
        map.clear(true);
        map.carried().clear(true);
        carryBlock();
    }
    map.setModified(false);
    return true;
}

// ---------------------------------------------------------------- the block of the carried ones

/// Two texts and three numbers.
static constexpr qint64 leastCarriedBytes = 5 * 4;

static bool isAway(const SCarriedSelection& selection) { return !selection.isAtHome; }

bool NSettingsFamily::write(CVersionedStream& stream, CCarriedSelections& carried)
{
    stream << qint32(std::count_if(carried.selections().begin(), carried.selections().end(), isAway));
    for (const SCarriedSelection& selection : carried.selections()) {
        if (!isAway(selection)) // those at home are in the block of the selections
            continue;
        stream << selection.typeId << selection.name << selection.version << selection.edition
               << qint32(selection.bytes.size());
        stream.writeRawData(selection.bytes.constData(), selection.bytes.size());
    }
    carried.setModified(false);
    return stream.status() == QDataStream::Ok;
}

bool NSettingsFamily::read(CVersionedStream& stream, CCarriedSelections& carried)
{
    qint32 count = 0;
    stream >> count;
    if (stream.status() != QDataStream::Ok || count < 0 || count > stream.bytesLeft() / leastCarriedBytes)
        throw std::length_error(std::to_string(count) + " carried selections announced, " +
                                std::to_string(stream.bytesLeft()) + " bytes follow");
    for (qint32 i = 0; i < count; ++i) {
        SCarriedSelection selection;
        qint32 length = 0;
        stream >> selection.typeId >> selection.name >> selection.version >> selection.edition >> length;
        if (stream.status() != QDataStream::Ok || length < 0 || length > stream.bytesLeft())
            throw std::length_error("carried selection " + std::to_string(i + 1) + " ends early");
        selection.bytes.resize(length);
        if (stream.readRawData(selection.bytes.data(), length) != length)
            throw std::runtime_error("carried selection " + std::to_string(i + 1) + " ends early");
        carried.add(std::move(selection));
    }
    carried.setModified(false);
    return true;
}

} // namespace NBrenmark
