#pragma once
// By how much two real numbers may differ and count as the same.

#include <string>

namespace NBrenmark {

struct STolerance
{
    double absolute = 0.0; ///< in the unit of the values
    double relative = 0.0; ///< of the greater of both

    bool isGiven() const { return absolute > 0.0 || relative > 0.0; }
    /// A NaN is as good as another.
    bool allows(double a, double b) const;
    /// Values as the text of a deck has them: "(0, 0, -9.81)". Only real numbers may differ.
    bool allows(const std::string& a, const std::string& b) const;
};

} // namespace NBrenmark
