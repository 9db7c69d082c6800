#pragma once
// Keeps the process-wide ids of geometry groups, which number the geometry of a deck, while groups are read that are no
// part of it.

#include "model/geometry_groups.h"

namespace NBrenmark {

class CUnmovedIds
{
public:
    CUnmovedIds() = default;
    ~CUnmovedIds() { GeometryGroups::setNextUniqueId(next); }
    CUnmovedIds(const CUnmovedIds&) = delete;
    CUnmovedIds& operator=(const CUnmovedIds&) = delete;

private:
    const quint32 next = GeometryGroups::nextUniqueId();
};

} // namespace NBrenmark
