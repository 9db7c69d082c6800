// The three roles: each has its key, and what stands below it passes through.

#include "config/application_roles.h"

#include <gtest/gtest.h>

namespace NBrenmark {
namespace {

using NConfig::CConfigManager;
using NConfig::CKeyPath;

CKeyPath path(const char* text) { return CKeyPath::fromString(text); }

TEST(ApplicationRoles, holdTheirKeysAndLeaveWhatIsBelow)
{
    CConfigManager manager;
    CCreator creator(manager);
    CProcessor processor(manager);
    CAnalyst analyst(manager);
    EXPECT_EQ(creator.configuration(), nullptr);
    manager.value<int>(path("PROCESSOR:GENERAL:NUM THREADS"), 8);
    manager.value<int>(path("SITE NOTES:KEPT"), 1);

    EXPECT_TRUE(manager.loadAll());
    ASSERT_NE(processor.configuration(), nullptr);
    EXPECT_EQ(processor.configuration()->value<int>(path("GENERAL:NUM THREADS")), 8);
    EXPECT_EQ(manager.childKeys(CKeyPath()),
              (std::set<CKeyPath>{path("ANALYST"), path("CREATOR"), path("PROCESSOR"), path("SITE NOTES")}));

    EXPECT_TRUE(manager.resetAll(true));
    EXPECT_TRUE(manager.childKeys(CKeyPath()).empty());
    EXPECT_TRUE(manager.resetAll(false));
    EXPECT_EQ(manager.childKeys(CKeyPath()), (std::set<CKeyPath>{path("ANALYST"), path("CREATOR"), path("PROCESSOR")}));
}

TEST(ApplicationRoles, theProcessHasOneProcessor)
{
    CConfigManager manager;
    EXPECT_EQ(CProcessor::current(), nullptr);
    auto processor = std::make_unique<CProcessor>(manager);
    EXPECT_EQ(CProcessor::current(), processor.get());
    processor.reset();
    EXPECT_EQ(CProcessor::current(), nullptr);
    EXPECT_TRUE(manager.loadAll());
}

} // namespace
} // namespace NBrenmark
