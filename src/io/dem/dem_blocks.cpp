// One block in or out: its name, its creator pair, and the worker that moves the data.
#include "config/user_preferences.h"
#include "core/deck/serialiser.h"
#include "core/deck/simulation.h"
#include "core/log.h"
#include "core/log_titles.h"
#include "io/dem/dem_io_manager.h"
#include "io/dem/form.h"
#include "io/dem/geometry_forms.h"
#include "io/dem/inflate_ahead.h"

#include <QFileInfo>

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace NBrenmark {

static SDataPlace creatorPlace(const QFile& file) { return placeIn(file).inBlock("creator data"); }

/// Times that are no numbers are the same, too.
static bool isSameTime(double a, double b) { return a == b || (std::isnan(a) && std::isnan(b)); }

static std::string secondsText(double time) { return QString::number(time, 'g', 17).toStdString() + " s"; }

/// \param cause  eCauseNone: the one whom the title blames
static bool blockFailed(const SLogTitle& title, const std::string& text, ECause cause = eCauseNone)
{
    reportFailure(title, text, cause);
    return false;
}

/// The head of a block: its name and what else comes before the data.
/// \return false, with a report, if readHead throws
template <class TReadHead>
static bool readHead(CDemDataStream& stream, TReadHead&& readHead)
{
    try {
        CInForm f(stream);
        readHead(f);
        return true;
    }
    catch (const std::exception& error) {
        return blockFailed(NLogTitle::legacyRead, textOf(error), causeOf(error, eCauseNone));
    }
}

static bool runReader(CDemDataStream& stream, CSimulationData& object, SSaveOptions& options,
                      IProgressController* progress)
{
    CSimDataReader reader(options);
    reader.object = &object;
    reader.stream = &stream;
    reader.format = eLegacyStream;
    if (reader.runAndWait(progress))
        return true;
    return blockFailed(NLogTitle::legacyRead, reader.errorText.toStdString(), reader.errorCause);
}

static bool runWriter(CDemDataStream& stream, CSimulationData& object, SSaveOptions& options, QFile& file)
{
    userPreferences(); // read before the worker asks: that has no lock
    CSimDataWriter writer(options);
    writer.object = &object;
    writer.stream = &stream;
    writer.format = eLegacyStream;
    if (!writer.runAndWait())
        return blockFailed(NLogTitle::legacyWrite, writer.errorText.toStdString(), writer.errorCause);
    return flushed(file);
}

// ---------------------------------------------------------------- creator data

bool CDemIoManager::readCreatorBlock(SSimulationFrame& frame, IProgressController* progress)
{
    const SPlace place = presentPlace();
    const CPlaceScope scope(creatorPlace(dataFile));
    CDemDataStream stream(&dataFile, readOptions);
    QString name;
    if (!readHead(stream, [&](CInForm& f) { f.text(name); }))
        return false;
    if (name != QLatin1String(NDemBlockName::creatorData))
        return blockFailed(NLogTitle::legacyRead, "byte " + std::to_string(place.offset) + " holds something else: \"" +
                                                      name.left(40).toStdString() + '"');
    CCreatorData& creator = frame.creator;
    creator.clear();
    creator.setStorageIndex(place.segment);
    creator.setStorageOffset(place.offset);
    if (runReader(stream, creator, readOptions, progress))
        return checkBlockEnd(place);
    // Half a model must not pass for the one that the next timestep asks for.
    creator.clear();
    return false;
}

bool CDemIoManager::readCreatorAt(SSimulationFrame& frame, const SPlace& place, bool restore,
                                  IProgressController* progress)
{
    const SPlace before = presentPlace();
    if (!goTo(place))
        return false;
    readOptions.isReadAgain = readModels.count(place) > 0;
    const bool isRead = readCreatorBlock(frame, progress);
    readOptions.isReadAgain = false;
    if (!isRead)
        return false;
    readModels.insert(place);
    return !restore || goTo(before);
}

bool CDemIoManager::readCreatorData(SSimulationFrame& frame)
{
    return readCreatorAt(frame, SPlace{frame.creator.storageIndex(), frame.creator.storageOffset()}, true, nullptr);
}

bool CDemIoManager::writeCreatorBlock(QFile& file, SSimulationFrame& frame)
{
    const CPlaceScope scope(creatorPlace(file));
    readModels.clear(); // another model may be in the place of one that was read
    CDemDataStream stream(&file, writeOptions);
    stream << QString(NDemBlockName::creatorData);
    return runWriter(stream, frame.creator, writeOptions, file);
}

// ---------------------------------------------------------------- timesteps

bool CDemIoManager::readTimestepBlock(SSimulationFrame& frame, TimestepIndex& index, IProgressController* progress)
{
    const quint32 number = frame.timestep.timestepIndex;
    const SPlace place = presentPlace();
    index[number].segment = place.segment;
    index[number].offset = place.offset;

    const CPlaceScope scope(placeIn(dataFile).inTimestep(number));
    CDemDataStream stream(&dataFile, readOptions);
    stream.ahead = present.get();
    SPlace creator{0, 0};
    const bool isTimestep = readHead(stream, [&](CInForm& f) {
        QString name;
        f.text(name);
        if (name != QLatin1String(NDemBlockName::timestep) && name != QLatin1String(NDemBlockName::oldTimestep))
            throw std::runtime_error("byte " + std::to_string(place.offset) + " holds something else: \"" +
                                     name.left(40).toStdString() + '"');
        f.i32(creator.segment); // 0: name.dem itself
        quint32 shortOffset = 0;
        if (name == QLatin1String(NDemBlockName::timestep))
            f.u64(creator.offset);
        else {
            f.i32(shortOffset);
            creator.offset = shortOffset;
        }
    });
    if (!isTimestep)
        return false;
    // Geometry that comes whole with a timestep takes the place of the model's: each such timestep begins with the
    // model as it is stored, and so does the next one that has its geometry from there.
    const bool wholeGeometry = wholeGeometryFollows(stream);
    if (wholeGeometry || frame.creator.geometryReplaced || creator.segment != frame.creator.storageIndex() ||
        creator.offset != frame.creator.storageOffset()) {
        readOptions.upgradeWithGeometry = wholeGeometry;
        const bool isRead = readCreatorAt(frame, creator, true, progress);
        readOptions.upgradeWithGeometry = false;
        if (!isRead)
            return false;
    }
    frame.timestep.clear();
    if (!runReader(stream, frame.timestep, readOptions, progress))
        return false;
    if (readOptions.extent == eReadParticles)
        return true;
    if (!checkBlockEnd(place))
        return false;
    if (!isSameTime(index[number].time, frame.timestep.time))
        report(eRepaired, NLogTitle::legacyRead,
               "the index has another time (" + secondsText(index[number].time) + ") than the timestep itself (" +
                   secondsText(frame.timestep.time) + "), which is kept");
    return true;
}

bool CDemIoManager::readTimestep(SSimulationFrame& frame, TimestepIndex& index, bool restorePosition,
                                 IProgressController* progress)
{
    const quint32 number = frame.timestep.timestepIndex;
    if (number >= index.size() || fileName.isEmpty())
        return false;
    const SPlace before = presentPlace();
    const SPlace place{index[number].segment, index[number].offset};
    const bool isExpected = ahead && aheadPlace == place;
    present = std::move(ahead);
    if (!isExpected)
        present.reset();
    // Timesteps are read one after the other: the threads that this one leaves idle begin with the next. What it takes
    // of memory is that of this one, which goes into the frame by and by. Where one may be all that is wanted, they
    // begin after it.
    const bool isWhole = readOptions.extent == eReadWhole, beginsAtOnce = isExpected || readOptions.isInOrder;
    if (isWhole && beginsAtOnce)
        beginAhead(index, number + 1);
    const bool isRead = goTo(place) && readTimestepBlock(frame, index, progress);
    present.reset();
    if (!isRead) {
        ahead.reset();
        return false;
    }
    if (isWhole && !beginsAtOnce)
        beginAhead(index, number + 1);
    return !restorePosition || goTo(before);
}

void CDemIoManager::beginAhead(const TimestepIndex& index, quint32 number)
{
    constexpr quint64 leastBytes = 0x10000; // of a timestep, for which another thread is worth its start
    constexpr quint64 mostGrowth = 4;       // of numbers in a lawful deck; what grows more is left to its read
    constexpr quint64 slack = 0x1000000;    // bytes, for what is small and grows much
    if (CThreadPool::current() == nullptr || writing || number >= index.size())
        return;
    aheadPlace = {index[number].segment, index[number].offset};
    const QString path = segmentPath(fileName, aheadPlace.segment);
    quint64 end = static_cast<quint64>(QFileInfo(path).size());
    const auto next = std::upper_bound(blockStarts.begin(), blockStarts.end(), aheadPlace);
    if (next != blockStarts.end() && next->segment == aheadPlace.segment)
        end = std::min(end, next->offset);
    if (end < aheadPlace.offset + leastBytes)
        return;
    ahead = std::make_unique<CInflateAhead>(QFile::encodeName(path).toStdString(), aheadPlace.offset, end,
                                            mostGrowth * (end - aheadPlace.offset) + slack);
}

bool CDemIoManager::writeTimestepBlock(QFile& file, CTimestepData& timestep, const SPlace& creator)
{
    const CPlaceScope scope(placeIn(file).inTimestep(timestep.timestepIndex));
    CDemDataStream stream(&file, writeOptions);
    stream << QString(NDemBlockName::timestep) << creator.segment << creator.offset; // always the form of 64 bits
    if (!runWriter(stream, timestep, writeOptions, file))
        return false;
    // A time given in place of the timestep's own is used once.
    writeOptions.overrideTime = stream.options.overrideTime;
    writeOptions.timeOverride = stream.options.timeOverride;
    return true;
}

} // namespace NBrenmark
