#pragma once
// By how much two real numbers may differ and count as the same.

#include <map>
#include <string>

namespace NBrenmark {

struct STolerance
{
    double absolute = 0.0; ///< in the unit of the values
    double relative = 0.0; ///< of the greater of both

    bool isGiven() const { return absolute > 0.0 || relative > 0.0; }
    /// A NaN is as good as another; nothing but itself is close to an infinity.
    bool allows(double a, double b) const;
    /// Real numbers as the text of a deck has them: "(0, 0, -9.81)".
    bool allows(const std::string& a, const std::string& b) const;
};

/// One for all quantities, and others for some of them.
struct STolerances
{
    STolerance all;
    /// By segments of a place, joined by slashes: "velocity", "particles/Ball", "position".
    std::map<std::string, STolerance> ofQuantities;

    bool isGiven() const { return all.isGiven() || !ofQuantities.empty(); }
    /// Of the names that a place has in it the one that ends deepest counts: a quantity's, not that of what it is of.
    const STolerance& of(const std::string& place) const;
};

} // namespace NBrenmark
