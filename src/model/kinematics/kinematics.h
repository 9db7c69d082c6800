#pragma once
// The motions of a geometry group.

#include "model/kinematics/time_dep_action.h"

#include <limits>
#include <utility>
#include <vector>

namespace NBrenmark {

class CKinematics
{
public:
    /// What the two times are without a motion. The end is the smallest positive number, not zero.
    static constexpr double noStart = std::numeric_limits<double>::max();
    static constexpr double noEnd = std::numeric_limits<double>::min();

    void read(IFileVisitorReader& visitor);
    void write(IFileVisitorWriter& visitor) const;

    /// Appends a motion; null is ignored. A motion that loops moves latestEnd to the greatest number,
    /// until recomputeTimes finds the end of its loop.
    void add(std::unique_ptr<CTimeDepAction> action);
    /// The first motion of that name, or null.
    CTimeDepAction* find(const QString& name) const;
    /// Deletes the first motion of that name; without one nothing happens.
    void remove(const QString& name);
    void recomputeTimes();
    /// Equal start times keep their order; those that are no number come last.
    void sortByStartTime();
    void clear();

    std::vector<std::unique_ptr<CTimeDepAction>> actions; ///< in the order of the file
    double earliestStart = noStart;                       ///< s
    double latestEnd = noEnd;                             ///< s

    // Of old decks, which stored translation and rotation as one record.
    quint32 legacyCount = 0;
    std::vector<std::pair<qint32, qint32>> legacyPairs; ///< index of a translation and of a rotation; -1 for none
};

/// Makes a motion by the word that files hold for its kind; null for a word that names none.
std::unique_ptr<CTimeDepAction> createMotion(const QString& word);

} // namespace NBrenmark
