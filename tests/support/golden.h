#pragma once
// Readable forms that are kept in tests/golden, a file each, and compared with what the code makes now.

#include "support/paths.h"

#include <gtest/gtest.h>
#include <cstdlib>
#include <fstream>
#include <sstream>

namespace NBrenmark {

/// Expects the text of a file in tests/golden. `./run golden` writes the files anew; review how they differ as a change of
/// the format.
inline void expectKept(const std::string& name, const std::string& text)
{
    const std::string path = projectFolder() + "/tests/golden/" + name;
    if (std::getenv("BRENMARK_WRITE_GOLDEN") != nullptr)
        std::ofstream(path) << text;
    std::ostringstream kept;
    kept << std::ifstream(path).rdbuf();
    EXPECT_EQ(text, kept.str()) << name;
}

} // namespace NBrenmark
