#pragma once
// The values of arrays that differ: how many, by how much and where. Those of one deck are kept for the comparison, up
// to a bound of memory.

#include "brenmark/text_diff.h"
#include "brenmark/tolerance.h"

#include "io/text/text_output.h"

#include <map>
#include <string>
#include <vector>

namespace NBrenmark {

/// Arrays of the source, by their paths.
class CKeptArrays
{
public:
    static constexpr size_t mostBytes = size_t(256) << 20;

    explicit CKeptArrays(const STolerances& tolerances = STolerances()) : tolerances(tolerances) {}

    /// \param path  of an array that is wanted
    void want(const std::string& path) { arrays[path]; }
    bool isWanted(const std::string& path) const { return arrays.count(path) > 0; }
    /// Copies the values, unless there are too many.
    void keep(const std::string& path, const SArrayView& values);
    /// Puts into a difference what the values show.
    void describe(SDifference& difference, const SArrayView& converted) const;

private:
    struct SKept
    {
        bool isKept = false;
        SArrayView view{"f64", nullptr, 0, 0};
        std::vector<char> bytes;
    };
    STolerances tolerances;
    std::map<std::string, SKept> arrays;
    size_t bytesKept = 0;
};

} // namespace NBrenmark
