#include "brenmark/timestep_sizes.h"

#include "core/deck/deck_files.h"

#include <QFileInfo>

#include <algorithm>
#include <numeric>

namespace NBrenmark {

static double segmentSize(const QString& path, quint32 segment)
{
    const QString main = stripDeckSuffix(path) + NDeckFile::demSuffix;
    return static_cast<double>(
        QFileInfo(segment == 0 ? main : main + NDeckFile::segmentInfix + QString::number(segment)).size());
}

std::vector<double> timestepSizes(const CDeckReader& reader, const QString& path)
{
    const TimestepIndex& index = reader.index();
    std::vector<double> sizes(index.size(), 1.0);
    if (reader.format() == eFormatHdf5) {
        for (size_t i = 0; i < sizes.size(); ++i)
            sizes[i] = static_cast<double>(
                QFileInfo(dataFolderPath(path) + QLatin1Char('/') + QString::number(i) + QLatin1String(".h5")).size());
        return sizes;
    }
    // An entry names where its timestep begins: it ends where the next one of its segment does, or with the segment.
    std::vector<size_t> order(index.size());
    std::iota(order.begin(), order.end(), size_t{0});
    const auto placeOf = [&](size_t i) { return std::make_pair(index[i].segment, index[i].offset); };
    std::stable_sort(order.begin(), order.end(), [&](size_t a, size_t b) { return placeOf(a) < placeOf(b); });
    for (size_t i = 0; i < order.size(); ++i) {
        const STimestepIndexEntry& entry = index[order[i]];
        const bool isLast = i + 1 == order.size() || index[order[i + 1]].segment != entry.segment;
        const double end = isLast ? segmentSize(path, entry.segment) : static_cast<double>(index[order[i + 1]].offset);
        sizes[order[i]] = std::max(end - static_cast<double>(entry.offset), 1.0);
    }
    return sizes;
}

} // namespace NBrenmark
