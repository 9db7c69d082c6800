#pragma once
// The numbers that samples of stored classes are made of.

#include "support/samples.h"

#include <array>
#include <cmath>
#include <vector>

namespace NBrenmark {

/// No two numbers of the samples are equal, and none is 0 or 1: what two fields exchange shows.
inline int& numberStep()
{
    static int step = 0;
    return step;
}

inline double nextNumber()
{
    const int step = ++numberStep();
    return (step % 2 == 0 ? 1.0 : -1.0) * (1000.0 + step / 7.0);
}

/// The same for counts and ids.
inline quint32 nextCount() { return static_cast<quint32>(std::lround(std::abs(nextNumber()) * 7.0)); }

inline void fill(double& number) { number = nextNumber(); }

template <std::size_t size>
void fill(std::array<double, size>& row)
{
    for (double& element : row)
        element = nextNumber();
}

template <class TElement, std::size_t size>
void fill(std::array<TElement, size>& row)
{
    for (TElement& element : row)
        element = static_cast<TElement>(nextCount());
}

/// Gives each of several fields a value.
template <class... TFields>
void fillAll(TFields&... fields)
{
    (fill(fields), ...);
}

/// Gives several arrays so many rows each.
template <class... TArrays>
void fillRows(std::size_t count, TArrays&... arrays)
{
    (arrays.resize(count), ...);
    const auto fillEach = [](auto& rows) {
        for (auto& row : rows)
            fill(row);
    };
    (fillEach(arrays), ...);
}

} // namespace NBrenmark
