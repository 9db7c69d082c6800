// Gives the process a view of the finished timesteps: a deck of links to their files, with a copy of the main file and of the
// source's settings, which say what custom properties there are. So it opens and locks no file that is being written.

#include "brenmark/early_reading.h"

#include "core/deck/deck_files.h"
#include "io/hdf5/deck_layout.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <unistd.h>
#include <utility>

namespace NBrenmark {

CEarlyReading::CEarlyReading(const CPartialFolder& folder, const QString& source, const std::vector<double>& sizes)
    : folder(folder), source(source), sizes(sizes), process(view())
{}

CEarlyReading::~CEarlyReading() { folder.clearScratch(); }

void CEarlyReading::finished(quint32 count)
{
    collect();
    const auto end = std::min(count, static_cast<quint32>(std::max<size_t>(sizes.size(), 1) - 1));
    double bytes = 0.0;
    for (quint32 number = next; number < end; ++number)
        bytes += sizes[number];
    if (process.isAtWork() || isOver || bytes < CDigestProcess::leastBytes)
        return;
    first = next;
    next = end;
    isOver = !makeView() || !process.askForTimesteps(first);
}

QString CEarlyReading::view() const
{
    return folder.scratch() + QLatin1Char('/') + QFileInfo(folder.deck()).fileName();
}

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

void CEarlyReading::collect()
{
    if (std::optional<SDigestPart> part = process.answer())
        parts.push_back(std::move(*part));
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
    if (std::optional<SDigestPart> part = process.lastAnswer())
        parts.push_back(std::move(*part));
    const auto disagrees = [&](const SDigestPart& part) { return !agrees(part, digest); };
    parts.erase(std::remove_if(parts.begin(), parts.end(), disagrees), parts.end());
    return std::move(parts);
}

} // namespace NBrenmark
