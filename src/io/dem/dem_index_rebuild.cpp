// A lost index is rebuilt by reading every block of every segment. The data files are only read.
#include "core/deck/deck_files.h"
#include "core/deck/simulation.h"
#include "core/log.h"
#include "core/log_titles.h"
#include "io/dem/dem_io_manager.h"
#include "io/dem/form.h"

namespace NBrenmark {

/// The name of the block at the present position, which stays; empty if there is none.
static QString peekBlockName(QFile& file)
{
    const qint64 position = file.pos();
    QString name;
    try {
        CDemDataStream stream(&file);
        CInForm(stream).text(name);
    }
    catch (const std::exception& error) {
        reportFailure(NLogTitle::legacyRead, file.fileName().toStdString() + ": " + textOf(error),
                      causeOf(error, eCauseNone));
        name.clear();
    }
    return file.seek(position) ? name : QString();
}

/// Reads the open segment's blocks up to its end.
/// \param found  timesteps so far; the list may have one entry more, for the timestep that a creator
///               block announces
bool CDemIoManager::scanSegment(SSimulationFrame& frame, TimestepIndex& index, quint32& found)
{
    const auto nextEntry = [&] {
        if (found == index.size())
            index.emplace_back();
        frame.timestep.timestepIndex = static_cast<quint32>(index.size() - 1);
    };
    while (!dataFile.atEnd()) {
        const QString name = peekBlockName(dataFile);
        if (name == QLatin1String(NDemBlockName::creatorData)) {
            nextEntry();
            if (!readCreatorBlock(frame, nullptr))
                return false;
        }
        else if (name == QLatin1String(NDemBlockName::timestep) || name == QLatin1String(NDemBlockName::oldTimestep)) {
            nextEntry();
            if (!readTimestepBlock(frame, index, nullptr))
                return false;
            index.back().time = frame.timestep.time;
            index.back().isFull = frame.timestep.isFull; // what the index would have said
            ++found;
        }
        else {
            reportFailure(NLogTitle::legacyRead,
                          dataFile.fileName().toStdString() + ": no block at byte " + std::to_string(dataFile.pos()));
            return false;
        }
    }
    return true;
}

bool CDemIoManager::regenerateIndexFile(const QString& name, SSimulationFrame& frame, TimestepIndex& index)
{
    indexFile.close();
    indexFile.setFileName(name);
    if (indexFile.exists() && !indexFile.remove())
        return fileFailed(NLogTitle::legacyWrite, "delete", indexFile);
    if (!indexFile.open(QIODevice::ReadWrite))
        return fileFailed(NLogTitle::legacyWrite, "open", indexFile);

    const auto segments = static_cast<quint32>(segmentFiles(fileName).size()) + 1; // and name.dem itself
    index.clear();
    quint32 found = 0;
    for (quint32 segment = 0; segment < segments; ++segment) {
        if (segment != 0 && !ensureSegment(segment)) {
            indexFile.remove();
            return false;
        }
        if (!scanSegment(frame, index, found)) {
            indexFile.remove();
            return false;
        }
    }
    index.resize(found); // a creator block at the end has no timestep
    if (found != timestepCount)
        report(eRepaired, NLogTitle::legacyRead,
               fileName.toStdString() + ": header announces " + counted(timestepCount, "timestep") + ", " +
                   std::to_string(found) + " found");
    timestepCount = found;
    lastSegment = segments - 1;
    return writeIndexFile(index);
}

} // namespace NBrenmark
