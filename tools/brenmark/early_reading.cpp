// Gives the process a view of the finished timesteps: a deck of links to their files, with a copy of the main file and of the
// source's settings, which say what custom properties there are. So it opens and locks no file that is being written.

#include "brenmark/early_reading.h"

#include "brenmark/digest_part.h"

#include "core/deck/deck_files.h"
#include "core/memory_ceiling.h"
#include "core/thread_pool.h"
#include "io/hdf5/deck_layout.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>
#include <utility>

namespace NBrenmark {

/// Opening a deck takes milliseconds; fewer bytes are read sooner afterwards.
static constexpr double leastBytes = 16e6;

CEarlyReading::CEarlyReading(const CPartialFolder& folder, const QString& source, const std::vector<double>& sizes)
    : folder(folder), source(source), sizes(sizes)
{}

CEarlyReading::~CEarlyReading()
{
    processes.signal(SIGKILL);
    while (processes.count() > 0)
        processes.wait(1000);
    if (input >= 0)
        ::close(input);
    folder.clearScratch();
}

bool CEarlyReading::isPossible() { return threadCount() > 1 && !isMemoryCeilingSet(); }

void CEarlyReading::finished(quint32 count)
{
    collect();
    const auto end = std::min(count, static_cast<quint32>(std::max<size_t>(sizes.size(), 1) - 1));
    double bytes = 0.0;
    for (quint32 number = next; number < end; ++number)
        bytes += sizes[number];
    if (isAtWork || isOver || bytes < leastBytes)
        return;
    isAtWork = giveOut(end);
    isOver = !isAtWork;
}

QString CEarlyReading::view() const
{
    return folder.scratch() + QLatin1Char('/') + QFileInfo(folder.deck()).fileName();
}

QString CEarlyReading::record() const { return digestFileOfPart(view(), first); }

/// Anew each time: what the process has read it has no more use for.
bool CEarlyReading::makeView()
{
    const QString deck = folder.deck();
    folder.clearScratch();
    const auto copyIfThere = [](const QString& from, const QString& to) {
        return !QFileInfo::exists(from) || QFile::copy(from, to);
    };
    if (!QDir().mkpath(dataFolderPath(view())) || !QFile::copy(deck, view()))
        return false;
    for (const QLatin1String suffix : {NDeckFile::settingsSuffix, NDeckFile::legacyPropertySuffix})
        if (!copyIfThere(stripDeckSuffix(source) + suffix, stripDeckSuffix(view()) + suffix))
            return false;
    const auto link = [&](quint32 number) { // some file systems have none
        return ::link(nativePath(timestepFilePath(deck, number)).c_str(),
                      nativePath(timestepFilePath(view(), number)).c_str()) == 0;
    };
    bool isWhole = first == 0 || link(0); // without which no deck is opened
    for (quint32 number = first; number < next && isWhole; ++number)
        isWhole = link(number);
    return isWhole;
}

bool CEarlyReading::startProcess()
{
    int ends[2] = {-1, -1};
    if (::pipe2(ends, O_CLOEXEC) != 0)
        return false;
    input = ends[1];
    try {
        processes.start({"verify", "--early", "--threads", std::to_string(threadCount()), "--", nativePath(view())},
                        ends[0]);
    }
    catch (const CFailure&) { // the comparison reads them
    }
    ::close(ends[0]);
    return processes.count() > 0;
}

/// \return whether the process was given the timesteps up to before end
bool CEarlyReading::giveOut(quint32 end)
{
    first = next;
    next = end;
    const std::string line = std::to_string(first) + '\n';
    return makeView() && (input >= 0 || startProcess()) &&
           ::write(input, line.data(), line.size()) == static_cast<ssize_t>(line.size());
}

void CEarlyReading::collect()
{
    const bool hasEnded = !processes.wait(0).empty();
    if (isAtWork && QFileInfo::exists(record())) {
        isAtWork = false;
        try {
            parts.push_back(readDigestPart(record()));
        }
        catch (const CFailure&) { // as above
        }
    }
    isOver = isOver || hasEnded;
}

/// Where the source has several models only those parts count that bring no other one: the others may add properties to
/// the settings, which have to be there when they are compared.
static bool agrees(const SDigestPart& part, const SDeckDigest& source)
{
    if (part.end() > source.timesteps.size())
        return false;
    for (quint32 number = part.first; number < part.end(); ++number) {
        const SDeckDigest::STimestep& own = source.timesteps[number];
        const SDeckDigest::STimestep& read = part.digest.timesteps[number - part.first];
        const bool isNewModel = number == 0 || source.timesteps[number - 1].model != own.model;
        if (read.text != own.text || read.model >= part.digest.models.size() ||
            part.digest.models[read.model].text != source.models[own.model].text ||
            (isNewModel && source.models.size() > 1))
            return false;
    }
    return true;
}

DigestParts CEarlyReading::take(const SDeckDigest& digest)
{
    if (input >= 0)
        ::close(std::exchange(input, -1));
    while (processes.count() > 0)
        processes.wait(1000);
    collect();
    const auto disagrees = [&](const SDigestPart& part) { return !agrees(part, digest); };
    parts.erase(std::remove_if(parts.begin(), parts.end(), disagrees), parts.end());
    return std::move(parts);
}

} // namespace NBrenmark
