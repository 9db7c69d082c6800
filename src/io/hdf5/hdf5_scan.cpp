// Which timesteps a deck has: what its folder says.

#include "io/hdf5/hdf5_io_manager.h"

#include "core/log.h"
#include "core/memory_ceiling.h"
#include "core/thread_pool.h"
#include "io/hdf5/deck_layout.h"
#include "io/hdf5/deck_tree.h"
#include "io/hdf5/file_structure.h"
#include "io/hdf5/guarded.h"
#include "io/hdf5/shapes.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <deque>
#include <vector>

namespace NBrenmark {

namespace {

/// The structure of numbered files, checked by the pool while earlier ones are read: one thread alone is in HDF5, and
/// this takes as long as what it does.
class CStructureChecks
{
public:
    CStructureChecks(const QString& deck, const std::vector<quint32>& numbers) : deck(deck), numbers(numbers) {}

    /// The check of the next file, valid up to the next call.
    CPooledTask& next()
    {
        constexpr std::size_t mostAtOnce = 16; // without a pool they are done when they are made
        if (begun > 0)
            checks.pop_front();
        for (; begun < numbers.size() && checks.size() < mostAtOnce; ++begun)
            checks.emplace_back([path = QFile::encodeName(timestepFilePath(deck, numbers[begun])).toStdString()] {
                checkStructure(path);
            });
        return checks.front();
    }

private:
    const QString& deck;
    const std::vector<quint32>& numbers;
    std::size_t begun = 0;
    std::deque<CPooledTask> checks;
};

} // namespace

/// A file with this number or a greater one is no timestep's: each number below takes memory and time, whether it has a
/// file or not, and a name must not cost minutes. A deck may have lost all but one file in 64, and any that is small.
static constexpr quint32 mostTimesteps(int files)
{
    return 20000 + 64 * static_cast<quint32>(std::min(files, 1 << 20));
}

/// The folder wins over the header, but a file that is gone is somebody's loss.
static void reportCount(quint32 found, quint32 expected, const QString& folder)
{
    const auto plural = [](bool isPlural) { return QString(isPlural ? "s" : ""); };
    const QString text =
        QString("%1 data file%2 exist%3 in folder \"%4\". %5 expected there to be %6 timestep data file%7.")
            .arg(QString::number(found), plural(found != 1), plural(found == 1), folder, "Brenmark",
                 QString::number(expected), plural(expected >= 2));
    if (found < expected)
        report(eLost, NLogTitle::dataLoss, text.toStdString(), expected - found);
    else
        report(eRepaired, NLogTitle::dataLoss, text.toStdString(), found - expected);
}

/// One message, however many there are: a stray file with a great number opens a gap of millions.
static void reportGap(quint32 first, quint32 last, const QString& folder)
{
    const std::string which = first == last
                                  ? "Timestep " + std::to_string(first) + " has"
                                  : "Timesteps " + std::to_string(first) + " to " + std::to_string(last) + " have";
    report(eRemark, NLogTitle::hdf5Read, which + " no file in " + folder.toStdString() + ".");
}

bool CHdf5IoManager::scanDataFolder(TimestepIndex& index)
{
    const QString folder = dataFolderPath(fileName);
    const QStringList names = dataFileNames(folder);
    if (names.isEmpty()) {
        reportFailure(NLogTitle::hdf5Read,
                      QString("Could not read file %1.\nIts folder %2 holds no data files.").arg(fileName, folder));
        return false;
    }
    if (const auto found = static_cast<quint32>(names.size()); found != timestepCount)
        reportCount(found, timestepCount, folder);

    auto bytes = static_cast<quint64>(QFileInfo(fileName).size());
    for (const QString& name : names)
        bytes += static_cast<quint64>(QFileInfo(folder + name).size());
    beginDeckMemory(bytes);

    std::vector<quint32> numbers; // ascending, as the names are
    for (const QString& name : names) {
        const std::optional<quint32> number = timestepNumber(name);
        if (number && *number < mostTimesteps(names.size()))
            numbers.push_back(*number);
        else
            report(eRemark, NLogTitle::hdf5Read,
                   "The file " + (folder + name).toStdString() + " isn't a timestep of this deck.");
    }
    timestepCount = numbers.empty() ? 0 : numbers.back() + 1;
    index.assign(timestepCount, STimestepIndexEntry()); // numbers without a file remain as gaps
    quint32 expected = 0;
    CStructureChecks checks(fileName, numbers);
    for (const quint32 number : numbers) {
        if (number > expected)
            reportGap(expected, number - 1, folder);
        expected = number + 1;
        if (switchToFile(number, &checks.next()) && !readIndexEntry(number, index[number]) && !readOptions.examine)
            return false;
        if (number > 0 && index[number - 1].offset != 0 && index[number].time == index[number - 1].time)
            report(eRemark, NLogTitle::hdf5Read,
                   "Timesteps " + std::to_string(number - 1) + " and " + std::to_string(number) +
                       " have the same time.");
    }
    return timestepCount > 0;
}

bool CHdf5IoManager::readIndexEntry(quint32 number, STimestepIndexEntry& entry)
{
    return guarded(NLogTitle::hdf5Read, QString("Could not read file %1.").arg(timestepFilePath(fileName, number)),
                   [&] {
                       const H5::Group timestep = openOnlyTimestep(*timestepFile);
                       readAttribute("time", entry.time, timestep);
                       readAttribute("full timestep", entry.isFull, timestep);
                       readAttribute(creatorIndexName, entry.creatorIndex, timestep);
                       entry.segment = number; // here that of its file
                       entry.offset = 1;       // not 0: the file is there
                   });
}

} // namespace NBrenmark
