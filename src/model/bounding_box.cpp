// Merging boxes: one with both corners at zero is empty.
#include "model/bounding_box.h"

#include "visitors/file_visitor_reader.h"
#include "visitors/file_visitor_writer.h"

#include "core/versioned_stream.h"

namespace NBrenmark {

void CBoundingBox::read(IFileVisitorReader& v) { v.readBoundingBox(*this); }

void CBoundingBox::write(IFileVisitorWriter& v) const { v.writeBoundingBox(*this); }

bool CBoundingBox::write(CVersionedStream& stream, IProgressController*)
{
    stream << upper.x << upper.y << upper.z << lower.x << lower.y << lower.z;
    return stream.status() == QDataStream::Ok;
}

bool CBoundingBox::read(CVersionedStream& stream, IProgressController*)
{
    stream >> upper.x >> upper.y >> upper.z >> lower.x >> lower.y >> lower.z;
    return stream.status() == QDataStream::Ok;
}

static void raise(double& own, double other)
{
    if (other > own)
        own = other;
}

/// Not "other < own": a coordinate that is no number takes the place, so that a broken box is seen to be broken.
static void lowerTo(double& own, double other)
{
    if (!(other >= own))
        own = other;
}

void CBoundingBox::merge(const C3DPoint& upperCorner, const C3DPoint& lowerCorner)
{
    const C3DPoint zero;
    if (upperCorner == zero && lowerCorner == zero)
        return;
    if (upper == zero && lower == zero) {
        upper = upperCorner;
        lower = lowerCorner;
        return;
    }
    raise(upper.x, upperCorner.x);
    raise(upper.y, upperCorner.y);
    raise(upper.z, upperCorner.z);
    lowerTo(lower.x, lowerCorner.x);
    lowerTo(lower.y, lowerCorner.y);
    lowerTo(lower.z, lowerCorner.z);
}

} // namespace NBrenmark
