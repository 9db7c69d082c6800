// Copies a line; of its two marks for editors a copy keeps one.
#include "model/kinematics/axis_line.h"

namespace NBrenmark {

CAxisLine::CAxisLine(const CAxisLine& other)
    : startPoint(other.startPoint), endPoint(other.endPoint), useEnd(other.useEnd)
{}

CAxisLine& CAxisLine::operator=(const CAxisLine& other)
{
    startPoint = other.startPoint;
    endPoint = other.endPoint;
    useStart = false;
    useEnd = other.useEnd;
    return *this;
}

} // namespace NBrenmark
