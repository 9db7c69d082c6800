#pragma once
// Rotations that act on a geometry group.

#include "maths/vector.h"

#include <vector>

namespace NBrenmark {

class IFileVisitorReader;
class IFileVisitorWriter;

class CAngVelAndPos
{
public:
    void read(IFileVisitorReader& visitor);
    void write(IFileVisitorWriter& visitor) const;

    C3DVector angularVelocity; ///< rad/s
    C3DPoint pointOfAction;    ///< m
};

class AngVelAndPosList : public std::vector<CAngVelAndPos>
{
public:
    void read(IFileVisitorReader& visitor);
    void write(IFileVisitorWriter& visitor) const;
};

} // namespace NBrenmark
