#pragma once
// An axis-aligned box by its two corners.

#include "core/read_write.h"
#include "maths/vector.h"

namespace NBrenmark {

class IFileVisitorReader;
class IFileVisitorWriter;

class CBoundingBox : public IReadWrite
{
public:
    CBoundingBox() = default;
    CBoundingBox(const C3DPoint& upper, const C3DPoint& lower) : upper(upper), lower(lower) {}

    /// Six doubles: upper, then lower.
    bool write(CVersionedStream& stream, IProgressController* progress) override;
    bool read(CVersionedStream& stream, IProgressController* progress) override;
    void read(IFileVisitorReader& visitor);
    void write(IFileVisitorWriter& visitor) const;

    /// Grows the box so that it holds another one. Two zero points change nothing; a box that is
    /// itself still zero takes the points as they are.
    void merge(const C3DPoint& upperCorner, const C3DPoint& lowerCorner);

    C3DPoint upper;
    C3DPoint lower;
};

} // namespace NBrenmark
