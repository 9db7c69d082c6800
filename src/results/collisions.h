#pragma once
// Records of contacts' histories. No record can be held yet: the families are always empty, and
// a deck with collisions is refused by the visitors.

#include "core/save_options.h"

#include <QtGlobal>

namespace NBrenmark {

class IFileVisitorReader;
class IFileVisitorWriter;

class CCollisionsBase
{
public:
    /// \param mask  the arrays that the family has
    explicit CCollisionsBase(quint32 mask) : mask(mask) {}
    virtual ~CCollisionsBase() = default;
    void read(IFileVisitorReader& visitor);
    void write(IFileVisitorWriter& visitor) const;

    /// The family's bit of the timestep mask.
    virtual quint32 familyMask() const = 0;
    quint32 recordCount() const { return 0; }
    void clear() {}

    quint32 mask;
};

class CSurfaceSurfaceCollisions : public CCollisionsBase
{
public:
    CSurfaceSurfaceCollisions() : CCollisionsBase(0x1FFFFFF) {}
    quint32 familyMask() const override { return eSurfaceSurfaceCollisions; }
};

class CSurfaceGeometryCollisions : public CCollisionsBase
{
public:
    CSurfaceGeometryCollisions() : CCollisionsBase(0x3FFFFF) {}
    quint32 familyMask() const override { return eSurfaceGeometryCollisions; }
};

class CCollisions
{
public:
    void read(IFileVisitorReader& visitor);
    void write(IFileVisitorWriter& visitor) const;
    void clear();

    CSurfaceSurfaceCollisions surfaceSurface;
    CSurfaceGeometryCollisions surfaceGeometry;
};

} // namespace NBrenmark
