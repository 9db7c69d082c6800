#include "brenmark/archive/shares.h"

#include <queue>
#include <algorithm>
#include <functional>
#include <tuple>

namespace NBrenmark {

void sortBySize(std::vector<SArchiveDeck>& decks)
{
    std::sort(decks.begin(), decks.end(), [](const SArchiveDeck& a, const SArchiveDeck& b) {
        return a.bytes != b.bytes ? a.bytes > b.bytes : a.source < b.source;
    });
}

std::vector<quint32> shareOut(const std::vector<SArchiveDeck>& decks, quint32 shares)
{
    // What a conversion takes whatever the size of its deck counts as so many bytes: ten thousand small decks are work.
    constexpr qint64 leastBytes = 1000000;
    using Share = std::tuple<qint64, quint32>;
    std::priority_queue<Share, std::vector<Share>, std::greater<>> least;
    for (quint32 share = 1; share <= shares; ++share)
        least.emplace(0, share);
    std::vector<quint32> of;
    of.reserve(decks.size());
    for (const SArchiveDeck& deck : decks) {
        const auto [bytes, share] = least.top();
        least.pop();
        least.emplace(bytes + deck.bytes + leastBytes, share);
        of.push_back(share);
    }
    return of;
}

} // namespace NBrenmark
