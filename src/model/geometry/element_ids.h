#pragma once
// The ids of all vertices, or of all triangles, of a simulation: which element of which group each of
// them stands for. Free ids form a chain through the same table, so that giving and taking back need
// no search.

#include <QtGlobal>
#include <cstddef>
#include <vector>

namespace NBrenmark {

class CElementIds
{
public:
    /// No owner, no element, end of the chain.
    static constexpr quint32 none = 0xFFFFFFFFu;

    /// Gives an element an id: the first free one, else a new one.
    quint32 take(quint32 group, quint32 element);
    /// Puts an id at the head of the free chain. An id that isn't the group's is left alone.
    void giveBack(quint32 id, quint32 group);
    /// Enters an id that a file holds.
    /// \param limit  greatest id that is taken
    /// \return false if the id is beyond the limit or taken
    bool enter(quint32 id, quint32 group, quint32 element, quint32 limit);
    /// Chains all ids without an owner, from the highest down: after a round of enter.
    void chainFreeIds();
    /// \return false if no element has the id
    bool locate(quint32 id, quint32& group, quint32& element) const;
    void clear();

    std::vector<quint32> owner; ///< by id: the group's index; none: the id is free
    std::vector<quint32> local; ///< by id: the element's index in its group, or the next free id
    quint32 firstFree = none;
};

} // namespace NBrenmark
