// Each test begins with the count of memory of no deck, also where all of them run in one process.
#include "core/memory_ceiling.h"

#include <gtest/gtest.h>

namespace NBrenmark {

namespace {
struct SFreshCount : testing::EmptyTestEventListener
{
    void OnTestStart(const testing::TestInfo&) override { beginDeckMemory(0); }
};
} // namespace

static const bool isListening = [] {
    testing::UnitTest::GetInstance()->listeners().Append(new SFreshCount); // which owns it
    return true;
}();

} // namespace NBrenmark
