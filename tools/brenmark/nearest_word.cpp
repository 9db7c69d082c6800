#include "brenmark/nearest_word.h"

#include <algorithm>

namespace NBrenmark {

/// How many letters have to change, come or go.
static size_t editDistance(const std::string& a, const std::string& b)
{
    std::vector<size_t> row(b.size() + 1);
    for (size_t j = 0; j <= b.size(); ++j)
        row[j] = j;
    for (size_t i = 1; i <= a.size(); ++i) {
        size_t diagonal = row[0];
        row[0] = i;
        for (size_t j = 1; j <= b.size(); ++j) {
            const size_t above = row[j];
            row[j] = std::min({above + 1, row[j - 1] + 1, diagonal + (a[i - 1] == b[j - 1] ? 0 : 1)});
            diagonal = above;
        }
    }
    return row[b.size()];
}

std::string nearestOf(const std::string& word, const std::vector<std::string>& words)
{
    constexpr size_t longestWord = 40;
    std::string nearest;
    size_t least = std::max<size_t>(word.size() / 3, 1) + 1;
    if (word.size() > longestWord)
        return nearest;
    for (const std::string& candidate : words) {
        const bool isBeginning = word.size() > 1 && candidate.compare(0, word.size(), word) == 0;
        const size_t away = isBeginning ? 0 : editDistance(word, candidate);
        if (away < least) {
            least = away;
            nearest = candidate;
        }
    }
    return nearest;
}

} // namespace NBrenmark
