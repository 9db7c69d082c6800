// Looks for the one way to cut a block into records. The search is bounded: a block that could be cut in many ways
// is carried whole.
#include "io/settings/selection_block.h"

#include "analysis/selection.h"
#include "analysis/selection_kinds.h"
#include "core/stop_flag.h"

#include <QStringList>
#include <QtEndian>

#include <algorithm>
#include <map>
#include <memory>
#include <utility>

namespace NBrenmark::NSelection {

namespace {

/// Where a selection may begin.
struct SHead
{
    int at = 0;
    int recordAt = 0;
    QString typeId;
    QString name;
    bool isKnown = false; ///< the class
};

/// More starts than selections by so many aren't sorted out: it would take the square of their number.
constexpr int mostFalseHeads = 64;
constexpr qint64 mostStates = 1 << 18; // of the search, in memory

/// Letters of a class that isn't known here.
constexpr quint32 mostClassBytes = 2 * 64;

constexpr quint32 nullText = 0xFFFFFFFF; // in place of a length

/// A text of a block, at a place; moves the place to its end. False if none is there.
bool takeText(const QByteArray& block, qint64& at, QByteArray& text)
{
    if (at + 4 > block.size()) // no room for a length
        return false;
    const auto stored = qFromBigEndian<quint32>(block.constData() + at);
    const quint32 bytes = stored == nullText ? 0 : stored;
    if (bytes % 2 != 0 || bytes > quint64(block.size() - at - 4)) // half a letter, or more than there is
        return false;
    text = QByteArray::fromRawData(block.constData() + at + 4, static_cast<int>(bytes));
    at += 4 + qint64(bytes);
    return true;
}

QString shown(const QByteArray& text)
{
    QString letters(text.size() / 2, QChar());
    for (int i = 0; i < letters.size(); ++i)
        letters[i] = QChar(qFromBigEndian<quint16>(text.constData() + 2 * i));
    return letters;
}

bool hasOnlyLetters(const QString& text)
{
    return !text.isEmpty() && std::all_of(text.begin(), text.end(), [](QChar letter) { return letter.isPrint(); });
}

/// The head at a place. Of an unknown class both names have to be the same; any is taken where one must be.
std::optional<SHead> headAt(const QByteArray& block, qint64 place, const QStringList& classes, bool mustBeOne)
{
    qint64 at = place;
    QByteArray typeId, name, again; // a record begins with the name once more
    if (!takeText(block, at, typeId) || quint32(typeId.size()) > mostClassBytes || !takeText(block, at, name))
        return std::nullopt;
    const qint64 recordAt = at;
    if (!takeText(block, at, again) || at >= block.size() || quint8(block.at(static_cast<int>(at))) > 1)
        return std::nullopt;
    SHead head{static_cast<int>(place), static_cast<int>(recordAt), shown(typeId), QString(), false};
    head.isKnown = classes.contains(head.typeId);
    if (!head.isKnown && !mustBeOne && (again != name || name.isEmpty() || !hasOnlyLetters(head.typeId)))
        return std::nullopt;
    head.name = shown(name);
    return head;
}

/// All places where a selection of a known class, or of any class, may begin, the first one among them; no more of
/// them than a cut sorts out.
std::vector<SHead> headsIn(const QByteArray& block, const SHead& front, const QStringList& classes, bool ofAnyClass,
                           size_t most)
{
    std::vector<SHead> heads{front};
    for (qint64 place = 1; place + 4 <= block.size() && heads.size() <= most; ++place) { // nothing is aligned
        if (place % 65536 == 0)
            leaveIfStopped();
        const auto bytes = qFromBigEndian<quint32>(block.constData() + place);
        if (bytes == 0 || bytes > mostClassBytes || bytes % 2 != 0) // the length of a class: most places end here
            continue;
        if (const std::optional<SHead> head = headAt(block, place, classes, false);
            head && (head->isKnown || ofAnyClass))
            heads.push_back(*head);
    }
    return heads;
}

/// The search for the right cut.
class CCut
{
public:
    CCut(const QByteArray& block, std::vector<SHead> heads, int count, quint32 version, quint32 edition)
        : block(block), heads(std::move(heads)), count(count), version(version), edition(edition)
    {}

    std::optional<std::vector<SSelectionPiece>> run()
    {
        const int headCount = static_cast<int>(heads.size());
        const int falseHeads = headCount - count; // what only looks like a selection
        if (falseHeads < 0 || falseHeads > mostFalseHeads || qint64(falseHeads) * headCount > mostStates)
            return std::nullopt;
        for (int first = headCount - 1; first >= 0; --first) // from the end, for each builds on those after it
            for (int pieces = std::max(1, count - first); pieces <= std::min(headCount - first, count); ++pieces)
                best[{first, pieces}] = bestFrom(first, pieces);
        if (best.at({0, count}).ways != 1 || bytesSearched > mostBytesSearched()) // none, or more than one
            return std::nullopt;
        std::vector<SSelectionPiece> cut;
        cut.reserve(static_cast<size_t>(count));
        for (int first = 0, pieces = count; pieces > 0; --pieces) {
            const int next = best.at({first, pieces}).next;
            const SHead& head = heads[first];
            const QByteArray bytes = record(first, next);
            cut.push_back({head.typeId, head.name, {bytes.constData(), bytes.size()}, display(first, next)});
            first = next;
        }
        return cut;
    }

private:
    /// The best cut of what follows a head into some pieces.
    struct SBest
    {
        int apart = 0; ///< pieces that can be taken apart
        int ways = 0;  ///< cuts with as many, 2 for more; 0 if there is none
        int next = 0;  ///< head after the first piece
    };

    SBest bestFrom(int first, int pieces)
    {
        const int end = static_cast<int>(heads.size());
        if (pieces == 1)
            return {display(first, end) ? 1 : 0, 1, end}; // the last piece takes all that is left
        SBest found;
        for (int next = first + 1; next <= end - (pieces - 1); ++next) {
            const auto rest = best.find({next, pieces - 1});
            if (rest == best.end() || rest->second.ways == 0)
                continue;
            const int apart = rest->second.apart + (display(first, next) ? 1 : 0);
            if (found.ways == 0 || apart > found.apart)
                found = {apart, rest->second.ways, next};
            else if (apart == found.apart)
                found.ways = 2; // or more
        }
        return found;
    }

    /// The bytes of the block themselves, which must not outlive it.
    QByteArray record(int first, int next) const
    {
        const int end = next < static_cast<int>(heads.size()) ? heads[next].at : block.size();
        return QByteArray::fromRawData(block.constData() + heads[first].recordAt, end - heads[first].recordAt);
    }

    const std::optional<SDisplayPart>& display(int first, int next)
    {
        const auto [found, isNew] = displays.try_emplace({first, next});
        if (isNew && heads[first].isKnown && bytesSearched <= mostBytesSearched()) {
            leaveIfStopped();
            bytesSearched += record(first, next).size();
            CDisplayOptions particle, contact; // taken and thrown away
            const std::unique_ptr<CSelection> scratch =
                createSelection(heads[first].typeId, std::string(), particle, contact);
            found->second = displayOf(*scratch, record(first, next), version, edition);
        }
        return found->second;
    }

    // In proportion to the block, whatever it holds.
    qint64 mostBytesSearched() const { return 16 * qint64(block.size()) + (qint64(1) << 20); }

    const QByteArray& block;
    const std::vector<SHead> heads;
    const int count;
    const quint32 version;
    const quint32 edition;
    qint64 bytesSearched = 0;
    std::map<std::pair<int, int>, SBest> best;                           ///< by head and number of pieces
    std::map<std::pair<int, int>, std::optional<SDisplayPart>> displays; ///< by head and the head after the piece
};

} // namespace

std::optional<std::vector<SSelectionPiece>> cutSelections(const QByteArray& block, qint32 count, quint32 version,
                                                          quint32 edition)
{
    const QStringList classes = selectionTypeIds();
    const std::optional<SHead> front = headAt(block, 0, classes, true);
    if (!front || count <= 0)
        return std::nullopt;
    const size_t mostHeads = static_cast<size_t>(count) + mostFalseHeads;
    const auto apart = [](const std::vector<SSelectionPiece>& cut) {
        return std::count_if(cut.begin(), cut.end(), [](const SSelectionPiece& piece) { return !!piece.display; });
    };
    const auto cutAt = [&](bool ofAnyClass) {
        return CCut(block, headsIn(block, *front, classes, ofAnyClass, mostHeads), count, version, edition).run();
    };
    auto known = cutAt(false);
    if (known && apart(*known) == count)
        return known;
    // The three texts of a head are found in queries, too: only where something is missing is a selection of an unknown
    // class looked for.
    auto any = cutAt(true);
    return any && (!known || apart(*any) > apart(*known)) ? any : known;
}

} // namespace NBrenmark::NSelection
