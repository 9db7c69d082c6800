// The blocks of a segment follow each other without a gap from its first byte, or from the header, to its end. What was
// read of a block and doesn't end where it should was damaged, however well it read.
#include "core/log.h"
#include "core/plain_file.h"
#include "io/dem/dem_data_stream.h"
#include "io/dem/dem_io_manager.h"

#include <algorithm>

namespace NBrenmark {

/// A block's name as it is stored.
static QByteArray storedName(const char* name)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << QString(name);
    return bytes;
}

enum EFound
{
    eNothing,
    eEndOfSegment,
    eCreatorBlock,
    eTimestepBlock
};

/// What a place of a segment has; the file stays where it is.
/// \throws device_error  it can't be read, which isn't damage
static EFound foundAt(QFile& file, qint64 place)
{
    if (place >= file.size())
        return eEndOfSegment;
    static const QByteArray creator = storedName(NDemBlockName::creatorData);
    static const QByteArray timesteps[] = {storedName(NDemBlockName::timestep), storedName(NDemBlockName::oldTimestep)};
    const qint64 before = file.pos();
    seekTo(file, place);
    const QByteArray bytes = file.read(timesteps[0].size());
    throwIfUnreadable(file);
    seekTo(file, before);
    if (bytes.startsWith(creator))
        return eCreatorBlock;
    const bool isTimestep = std::any_of(std::begin(timesteps), std::end(timesteps),
                                        [&](const QByteArray& name) { return bytes.startsWith(name); });
    return isTimestep ? eTimestepBlock : eNothing;
}

static bool notReachable(const device_error& error)
{
    reportFailure(NLogTitle::legacyRead, error.what(), causeOf(error, eCauseSource));
    return false;
}

static std::string byteText(qint64 place) { return "byte " + std::to_string(place); }

void CDemIoManager::noteBlockStarts(const TimestepIndex& index)
{
    blockStarts.clear();
    blockStarts.reserve(index.size());
    for (const STimestepIndexEntry& entry : index)
        blockStarts.push_back({entry.segment, entry.offset});
    std::sort(blockStarts.begin(), blockStarts.end());
    const auto repeated = std::adjacent_find(blockStarts.begin(), blockStarts.end());
    if (repeated != blockStarts.end())
        report(eLost, NLogTitle::legacyRead,
               "the index has more than one timestep at " + byteText(static_cast<qint64>(repeated->offset)) +
                   " of segment " + std::to_string(repeated->segment));
}

bool CDemIoManager::checkFirstBlock(qint64 place)
try {
    if (foundAt(dataFile, place) == eNothing)
        reportOnce(eLost, NLogTitle::legacyRead,
                   "no block begins at " + byteText(place) + ", where the first one should");
    return true;
}
catch (const device_error& error) {
    return notReachable(error);
}

bool CDemIoManager::checkBlockEnd(const SPlace& start)
try {
    if (writing || blockStarts.empty()) // the index changes with what is written, or is being made
        return true;
    const qint64 end = dataFile.pos();
    // Beyond the last timestep of a segment, or of the deck, no place is known.
    const auto next = std::upper_bound(blockStarts.begin(), blockStarts.end(), start);
    const bool isKnown = next != blockStarts.end() && next->segment == start.segment;
    const qint64 nextStart = isKnown ? static_cast<qint64>(next->offset) : dataFile.size();
    const std::string ends =
        "a block from " + byteText(static_cast<qint64>(start.offset)) + " on was read up to " + byteText(end) + ", ";
    if (end > nextStart) {
        reportOnce(eLost, NLogTitle::legacyRead,
                   ends + std::to_string(end - nextStart) + " bytes beyond the start of the next timestep");
        return true;
    }
    switch (foundAt(dataFile, end)) {
    case eCreatorBlock: break; // one that no timestep uses stays when a deck is cut
    case eEndOfSegment:
    case eTimestepBlock:
        if (end != nextStart)
            reportOnce(eLost, NLogTitle::legacyRead, ends + "where a timestep begins that the index doesn't have");
        break;
    case eNothing:
        reportOnce(eLost, NLogTitle::legacyRead,
                   ends + std::to_string(nextStart - end) + " bytes before " +
                       (isKnown ? "the next timestep" : "the end of the file") + ", and no block begins there");
        break;
    }
    return true;
}
catch (const device_error& error) {
    return notReachable(error);
}

} // namespace NBrenmark
