#pragma once
// The geometry of a simulation. No shape can be held yet: the list is always empty, and a deck
// with geometry is refused by the visitors.

#include <QtGlobal>

namespace NBrenmark {

class IFileVisitorReader;
class IFileVisitorWriter;

class GeometryGroups
{
public:
    void read(IFileVisitorReader& visitor);
    void write(IFileVisitorWriter& visitor) const;

    quint32 count() const { return 0; }
    void clear() {}
};

} // namespace NBrenmark
