#pragma once
// The moment of inertia of a geometry group.

#include <array>

namespace NBrenmark {

class IFileVisitorReader;
class IFileVisitorWriter;

class CMomentOfInertia
{
public:
    void read(IFileVisitorReader& visitor);
    void write(IFileVisitorWriter& visitor) const;

    std::array<double, 6> values{}; ///< in the order of the file, kg m^2; carried, not computed
};

} // namespace NBrenmark
