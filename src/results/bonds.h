#pragma once
// Pairs held together by a bonded contact model. No row can be held yet: the families are always
// empty, and a deck with bonds is refused by the visitors.

#include <QtGlobal>

namespace NBrenmark {

class IFileVisitorReader;
class IFileVisitorWriter;

class CBondsBase
{
public:
    virtual ~CBondsBase() = default;
    void read(IFileVisitorReader& visitor);
    void write(IFileVisitorWriter& visitor) const;
    quint32 rowCount() const { return 0; }
};

class CSurfaceSurfaceBonds : public CBondsBase
{
};

class CSurfaceGeometryBonds : public CBondsBase
{
};

class CBonds
{
public:
    void read(IFileVisitorReader& visitor);
    void write(IFileVisitorWriter& visitor) const;
    void clear() {}

    CSurfaceSurfaceBonds surfaceSurface;
    CSurfaceGeometryBonds surfaceGeometry;
};

} // namespace NBrenmark
