#include "brenmark/deck_problems.h"

#include <QFileInfo>

#include <algorithm>

namespace NBrenmark {

QString missingSegment(const CDeckReader& reader, const QString& path)
{
    quint32 last = 0;
    for (const STimestepIndexEntry& entry : reader.index())
        last = std::max(last, entry.segment);
    const QString start = stripDeckSuffix(path) + NDeckFile::demSuffix + NDeckFile::segmentInfix;
    for (quint32 number = 1; number <= last; ++number)
        if (QString segment = start + QString::number(number); !QFileInfo(segment).isFile())
            return segment;
    return QString();
}

std::vector<std::string> problemsOf(const CDeckReader& reader, const QString& path)
{
    std::vector<std::string> problems;
    if (reader.format() == eFormatLegacy) {
        if (const QString segment = missingSegment(reader, path); !segment.isEmpty())
            problems.push_back(utf8(segment) + " is missing");
        return problems;
    }
    // What the look through the folder of numbered files said: the manager opens each of them.
    for (const SLogRecord& message : reader.messages())
        if (message.level == eError || message.title == NLogTitle::dataLoss.text ||
            message.title == NLogTitle::hdf5Read.text)
            problems.push_back(withoutEnd(message.placedText()));
    for (const QLatin1String suffix : {NDeckFile::settingsSuffix, NDeckFile::configurationSuffix})
        if (const QString file = stripDeckSuffix(path) + suffix; !QFileInfo(file).isFile())
            problems.push_back(utf8(file) + " is missing");
    return problems;
}

CFailure problemFailure(const std::string& path, EDeckFormat format, const std::string& problem)
{
    return {eExitSource, path + ": " + problem,
            format == eFormatHdf5 ? "Copy the deck again from where it is whole, or convert its source again."
                                  : "Copy the deck again from the archive, with all its files."};
}

bool isWholeConversion(const QString& target, const QString& source, size_t timesteps)
{
    if (!QFileInfo(target).isFile() || detectFormat(target) != eFormatHdf5)
        return false;
    const auto timesOf = [](const CDeckReader& reader) {
        std::vector<double> times;
        for (const STimestepIndexEntry& entry : reader.index())
            times.push_back(entry.time);
        return times;
    };
    try {
        std::vector<double> made;
        {
            const CDeckReader reader(target);
            if (reader.timestepCount() != timesteps || !problemsOf(reader, target).empty())
                return false;
            made = timesOf(reader);
        }
        return made == timesOf(CDeckReader(source, eUpgradedModel, eNotExamined, true));
    }
    catch (const CFailure&) { // what is there can't be opened: it is in the way
        return false;
    }
}

} // namespace NBrenmark
