// Tries every place where the display options of a record may end, and says which one the rest fits.
#include "io/settings/selection_record.h"

#include "analysis/query_kinds.h"
#include "analysis/selection.h"
#include "core/log.h"
#include "core/stop_flag.h"
#include "core/versioned_stream.h"
#include "io/settings/entry_forms.h"

#include <QBuffer>
#include <QStringList>
#include <QtEndian>

#include <algorithm>
#include <exception>
#include <stdexcept>
#include <vector>

namespace NBrenmark::NSelection {

namespace {

/// A record as a stream of its version. Texts and lists end with it.
struct SRecordStream
{
    SRecordStream(const QByteArray& record, quint32 version, quint32 edition)
    {
        buffer.setData(record);
        buffer.open(QIODevice::ReadOnly);
        stream.setFileVersion(version);
        stream.edition = edition;
        stream.setLimit(record.size());
    }
    QBuffer buffer;
    CVersionedStream stream{&buffer};
};

quint32 wordAt(const QByteArray& bytes, qint64 at)
{
    return at >= 0 && at + 4 <= bytes.size() ? qFromBigEndian<quint32>(bytes.constData() + at) : 0;
}

/// Words as the stream holds texts.
std::vector<QByteArray> streamed(const QStringList& words)
{
    std::vector<QByteArray> list;
    for (const QString& word : words) {
        QBuffer buffer;
        buffer.open(QIODevice::WriteOnly);
        CVersionedStream stream(&buffer);
        stream << word;
        list.push_back(buffer.data());
    }
    return list;
}

bool holdsOneAt(const QByteArray& bytes, qint64 at, const std::vector<QByteArray>& words)
{
    return std::any_of(words.begin(), words.end(), [&](const QByteArray& word) {
        return at + word.size() <= bytes.size() && std::equal(word.begin(), word.end(), bytes.begin() + at);
    });
}

/// The search for the end of the display options in one record.
class CDisplaySearch
{
public:
    CDisplaySearch(CSelection& scratch, const QByteArray& record, quint32 version, quint32 edition)
        : scratch(scratch), record(record), source(record, version, edition)
    {}

    std::optional<SDisplayPart> run()
    {
        const CLogSilence silence; // what a wrong place makes of the bytes is no message
        const int begin = readFront();
        if (begin < 0)
            return std::nullopt;
        findGeometryFlag();
        for (int place = begin; place <= record.size(); ++place) {
            if (place % 65536 == 0)
                leaveIfStopped();
            if (!mayBeginAt(place))
                continue;
            if (isWordless(place) && (mostWords > 0 || placesMet > 1))
                continue; // can't become the right one any more
            take(place);
            if (bytesTried > mostBytesTried())
                return std::nullopt;
        }
        const bool isReported = placesMet == 1 && !holdsAny(begin, best, filterWords) &&
                                (mostWords > 0 || !holdsAny(begin, best, queryWords));
        return isReported ? std::optional<SDisplayPart>({begin, best}) : std::nullopt;
    }

private:
    /// Name and flag. \return where they end; below 0 if something else is stored there
    int readFront()
    {
        try {
            CInEntryForm f(source.stream, record);
            QString name;
            bool flag = false;
            f.text("name", name);
            f.flag8("active", flag);
            const bool isKept = QString::fromStdString(name.toStdString()) == name; // no half of a surrogate pair
            return isKept ? static_cast<int>(source.buffer.pos()) : -1;
        }
        catch (const std::exception& error) { // no record: the caller carries it
            if (!meansDamage(error))
                throw;
            return -1;
        }
    }

    void findGeometryFlag()
    {
        const CInEntryForm f(source.stream, record);
        if (scratch.mayOwnGeometry(f))
            geometryFlag = countsBytes + CAutoSelection::colourBytes(f); // after two empty lists and the colour
    }

    /// Whether a list of filters and one of query sections may begin at a place: what costs next to nothing to see.
    bool mayBeginAt(qint64 place) const
    {
        if (place + countsBytes > record.size())
            return false;
        if (wordAt(record, place) != 0)
            return holdsOneAt(record, place + 4, filterWords); // a filter begins with the word of its class
        const quint32 sections = wordAt(record, place + 4);    // of queries: their count follows that of the filters
        if (sections == 0) // two zeros: possible nearly everywhere, and so proof of nothing
            return true;
        const quint32 left = static_cast<quint32>(record.size() - place - countsBytes);
        const quint32 nameBytes = wordAt(record, place + 8) == nullText ? 0 : wordAt(record, place + 8);
        if (sections > left / countsBytes || nameBytes % 2 != 0 || nameBytes > left)
            return false;
        const qint64 queriesAt = place + 12 + nameBytes; // two counts, the name of the first section and its length
        return wordAt(record, queriesAt) == 0 || holdsOneAt(record, queriesAt + 4, queryWords);
    }

    /// Whether no word of a class can follow a place where lists may begin.
    bool isWordless(qint64 place) const
    {
        const bool hasLists = wordAt(record, place) != 0 || wordAt(record, place + 4) != 0;
        const qint64 flagAt = place + geometryFlag;
        const bool hasGeometry = geometryFlag > 0 && flagAt < record.size() && record.at(static_cast<int>(flagAt)) == 1;
        return !hasLists && !hasGeometry;
    }

    /// Reads the rest at a place, and takes the place if it reads to the last byte.
    void take(int place)
    {
        source.stream.resetStatus(); // of the place before
        source.buffer.seek(place);
        CInEntryForm f(source.stream, record);
        bool isRead = false;
        try {
            scratch.rest(f);
            isRead = source.buffer.atEnd(); // what leaves a byte over began in the wrong place
        }
        catch (const std::exception& error) { // not here, then
            if (!meansDamage(error))
                throw;
            isRead = false;
        }
        bytesTried += trialBytes + std::max<qint64>(0, source.buffer.pos() - place);
        if (!isRead || (placesMet > 0 && f.wordsMet < mostWords))
            return;
        placesMet = placesMet > 0 && f.wordsMet == mostWords ? placesMet + 1 : 1;
        mostWords = f.wordsMet;
        best = place;
    }

    /// Whether display options would hold words of lists: those that are there begin with something unknown then, and
    /// the place is a wrong one. A query's word may be that of an attribute, too: it speaks against a place without
    /// any.
    bool holdsAny(int begin, int end, const std::vector<QByteArray>& words) const
    {
        const QByteArray display = QByteArray::fromRawData(record.constData() + begin, end - begin);
        return std::any_of(words.begin(), words.end(), [&](const QByteArray& word) { return display.contains(word); });
    }

    qint64 mostBytesTried() const { return 8 * qint64(record.size()) + (qint64(1) << 20); }

    static constexpr int countsBytes = 2 * 4;
    static constexpr int trialBytes = 64; ///< what a trial costs beside the bytes that it reads
    static constexpr quint32 nullText = 0xFFFFFFFF;

    CSelection& scratch;
    const QByteArray& record;
    SRecordStream source;
    const std::vector<QByteArray> filterWords = streamed(filterTypeIds());
    const std::vector<QByteArray> queryWords = streamed(queryIdentifiers());
    int geometryFlag = 0; ///< from a place without lists on; 0 if the layout has none

    int best = 0;
    int placesMet = 0; ///< with mostWords
    quint32 mostWords = 0;
    qint64 bytesTried = 0;
};

} // namespace

std::optional<SDisplayPart> displayOf(CSelection& scratch, const QByteArray& record, quint32 version, quint32 edition)
{
    return CDisplaySearch(scratch, record, version, edition).run();
}

void readRecord(CSelection& selection, const QByteArray& record, const SDisplayPart& display, quint32 version,
                quint32 edition)
{
    SRecordStream source(record, version, edition);
    CInEntryForm f(source.stream, record);
    f.text("name", selection.name); // again: the block has it in front of the record
    f.flag8("active", selection.active);
    selection.particleDisplay.bytes = record.mid(display.begin, display.end - display.begin);
    selection.contactDisplay.bytes.clear(); // nothing parts them from those of the particles
    source.buffer.seek(display.end);
    selection.rest(f);
    selection.applyToQueries();
}

QByteArray writtenRecord(CSelection& selection)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    CVersionedStream stream(&buffer);
    COutEntryForm f(stream);
    selection.form(f);
    return buffer.data();
}

} // namespace NBrenmark::NSelection
