#pragma once
// The text of a model as a table, for tests that ask which of its lines a change moves.

#include "io/text/text_output.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

namespace NBrenmark {

using Lines = std::map<std::string, std::string>;

/// Takes every line; a path that comes twice fails the test.
class CLineMap : public ITextSink
{
public:
    void line(const std::string& path, const std::string& value) override
    {
        EXPECT_TRUE(lines.emplace(path, value).second) << "a path met twice: " << path;
    }
    Lines lines;
};

/// Paths whose lines differ, are new or gone.
inline std::vector<std::string> changed(const Lines& before, const Lines& after)
{
    std::vector<std::string> paths;
    for (const auto& [path, value] : before)
        if (after.count(path) == 0 || after.at(path) != value)
            paths.push_back(path);
    for (const auto& [path, value] : after)
        if (before.count(path) == 0)
            paths.push_back(path);
    return paths;
}

} // namespace NBrenmark
