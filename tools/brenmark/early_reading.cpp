// Gives a process a view of the finished timesteps: a deck of links to their files, with a copy of the main file and of the
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
#include <unistd.h>

namespace NBrenmark {

/// A process takes 20 ms to start; fewer bytes are read sooner afterwards.
static constexpr double leastBytes = 16e6;

static QString digestFile(const CPartialFolder& folder) { return folder.scratch() + QLatin1String("/digests"); }

CEarlyReading::CEarlyReading(const CPartialFolder& folder, const QString& source, const std::vector<double>& sizes)
    : folder(folder), source(source), sizes(sizes)
{}

CEarlyReading::~CEarlyReading()
{
    processes.signal(SIGKILL);
    while (processes.count() > 0)
        processes.wait(1000);
    folder.clearScratch();
}

bool CEarlyReading::isPossible() { return threadCount() > 1 && !isMemoryCeilingSet(); }

void CEarlyReading::finished(quint32 count)
{
    collect(0);
    const auto end = std::min(count, static_cast<quint32>(std::max<size_t>(sizes.size(), 1) - 1));
    double bytes = 0.0;
    for (quint32 number = next; number < end; ++number)
        bytes += sizes[number];
    if (processes.count() == 0 && bytes >= leastBytes)
        start(end);
}

bool CEarlyReading::makeView(const QString& view) const
{
    const QString deck = folder.deck();
    const auto copyIfThere = [](const QString& from, const QString& to) {
        return !QFileInfo::exists(from) || QFile::copy(from, to);
    };
    if (!QDir().mkpath(dataFolderPath(view)) || !QFile::copy(deck, view))
        return false;
    for (const QLatin1String suffix : {NDeckFile::settingsSuffix, NDeckFile::legacyPropertySuffix})
        if (!copyIfThere(stripDeckSuffix(source) + suffix, stripDeckSuffix(view) + suffix))
            return false;
    const auto link = [&](quint32 number) { // some file systems have none
        return ::link(nativePath(timestepFilePath(deck, number)).c_str(),
                      nativePath(timestepFilePath(view, number)).c_str()) == 0;
    };
    bool isWhole = first == 0 || link(0); // without which no deck is opened
    for (quint32 number = first; number < next && isWhole; ++number)
        isWhole = link(number);
    return isWhole;
}

void CEarlyReading::start(quint32 end)
{
    first = next;
    next = end;
    folder.clearScratch();
    const QString view = folder.scratch() + QLatin1Char('/') + QFileInfo(folder.deck()).fileName();
    if (!makeView(view))
        return;
    try {
        processes.start({"verify", "--record", nativePath(digestFile(folder)), "--from", std::to_string(first),
                         "--threads", std::to_string(threadCount()), "--", nativePath(view)});
    }
    catch (const CFailure&) { // no process to be had: the comparison reads them
    }
}

void CEarlyReading::collect(int milliseconds)
{
    for (const SChildEnd& end : processes.wait(milliseconds)) {
        try {
            if (end.code == 0 && end.signal == 0)
                parts.push_back(readDigestPart(digestFile(folder)));
        }
        catch (const CFailure&) { // as above
        }
    }
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
    while (processes.count() > 0)
        collect(1000);
    parts.erase(
        std::remove_if(parts.begin(), parts.end(), [&](const SDigestPart& part) { return !agrees(part, digest); }),
        parts.end());
    return std::move(parts);
}

} // namespace NBrenmark
