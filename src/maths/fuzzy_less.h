#pragma once
// An order of numbers in which those that fuzzyEqual takes for one number are one key.

#include "maths/vector.h"

#include <cmath>
#include <map>

namespace NBrenmark {

struct SFuzzyLess
{
    bool operator()(double a, double b) const
    {
        // Not-a-number would count as equal to every key and swallow them all: it is a key of its own, the last.
        if (std::isnan(a) || std::isnan(b))
            return !std::isnan(a) && std::isnan(b);
        return a < b && !fuzzyEqual(a, b);
    }
};

template <class TValue>
using FuzzyMap = std::map<double, TValue, SFuzzyLess>;

} // namespace NBrenmark
