#pragma once
// The line that a motion follows or turns about.

#include "maths/vector.h"

namespace NBrenmark {

class CAxisLine
{
public:
    CAxisLine() = default;
    CAxisLine(const C3DPoint& start, const C3DPoint& end) : startPoint(start), endPoint(end) {}
    /// A copy keeps useEnd, not useStart.
    CAxisLine(const CAxisLine& other);
    CAxisLine& operator=(const CAxisLine& other);

    /// From start to end, of length 1; what is left of it for a line of length zero.
    C3DVector direction() const { return (endPoint - startPoint).normalised(); }

    C3DPoint startPoint;   ///< m
    C3DPoint endPoint;     ///< m
    bool useStart = false; ///< carried for an editor, never stored
    bool useEnd = false;   ///< likewise
};

} // namespace NBrenmark
