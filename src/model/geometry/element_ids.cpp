// Ids as they are given, taken back and found in files. An id that is entered twice is refused, so that the owner
// can number all groups anew.
#include "model/geometry/element_ids.h"

namespace NBrenmark {

quint32 CElementIds::take(quint32 group, quint32 element)
{
    quint32 id = firstFree;
    if (id != none)
        firstFree = local[id];
    else {
        id = static_cast<quint32>(owner.size());
        owner.push_back(none);
        local.push_back(none);
    }
    owner[id] = group;
    local[id] = element;
    return id;
}

void CElementIds::giveBack(quint32 id, quint32 group)
{
    if (id >= owner.size() || owner[id] == none || owner[id] != group)
        return;
    owner[id] = none;
    local[id] = firstFree;
    firstFree = id;
}

bool CElementIds::enter(quint32 id, quint32 group, quint32 element, quint32 limit)
{
    if (id > limit)
        return false;
    if (id >= owner.size()) {
        owner.resize(std::size_t(id) + 1, none);
        local.resize(std::size_t(id) + 1, none);
    }
    if (owner[id] != none)
        return false;
    owner[id] = group;
    local[id] = element;
    return true;
}

void CElementIds::chainFreeIds()
{
    firstFree = none;
    for (std::size_t id = 0; id < owner.size(); ++id) {
        if (owner[id] != none)
            continue;
        local[id] = firstFree;
        firstFree = static_cast<quint32>(id);
    }
}

bool CElementIds::locate(quint32 id, quint32& group, quint32& element) const
{
    if (id >= owner.size() || owner[id] == none)
        return false;
    group = owner[id];
    element = local[id];
    return true;
}

void CElementIds::clear()
{
    owner.clear();
    local.clear();
    firstFree = none;
}

} // namespace NBrenmark
