// The definition of a simulation as a whole.
#include "support/samples.h"
#include "support/text_lines.h"

#include <gtest/gtest.h>
#include <algorithm>
#include <set>

namespace NBrenmark {

TEST(CreatorData, aSettersOldValueIsRemembered)
{
    CCreatorData creator{SPropertyManagers()};
    creator.setStorageIndex(3);
    creator.setStorageIndex(5);
    EXPECT_EQ(creator.storageIndex(), 5u);
    EXPECT_EQ(creator.previousStorageIndex(), 3u);
    creator.setStorageOffset(1000);
    EXPECT_EQ(creator.previousStorageOffset(), 0xFFFFFFFFFFFFFFFFu);
    creator.setStorageOffset(2000);
    EXPECT_EQ(creator.previousStorageOffset(), 1000u);
    EXPECT_FALSE(creator.modified);
    creator.changeTitle("Silo");
    EXPECT_EQ(creator.title, QString("Silo"));
    EXPECT_TRUE(creator.modified);
}

TEST(CreatorData, clearEmptiesTheListsAndKeepsTitleGravityAndDomain)
{
    SModel filled;
    SModel empty;
    fill(filled.creator);
    filled.creator.legacyStreamFlag = true;
    filled.creator.setStorageIndex(4);
    filled.creator.setStorageOffset(44);
    filled.creator.buildRevision = empty.creator.buildRevision; // whoever wrote it
    filled.creator.buildBranch = empty.creator.buildBranch;
    for (SModel* model : {&filled, &empty})
        model->creator.clear();
    EXPECT_TRUE(filled.creator.modified);
    EXPECT_TRUE(filled.creator.physicsModels.sphereSphereModels.empty());
    const std::vector<std::string> never = textLinesOf(empty.creator);
    std::set<std::string> kept; // parts in which it isn't like one that never held anything
    for (const std::string& line : textLinesOf(filled.creator))
        if (std::find(never.begin(), never.end(), line) == never.end())
            kept.insert(line.substr(0, line.find_first_of("/ ", line.find('/') + 1)));
    EXPECT_EQ(kept, (std::set<std::string>{"object/title", "object/damping", "object/gravity", "object/domain",
                                           "object/cylindricalPeriodicBoundaryConditions"}));
    EXPECT_EQ(textLinesOf(filled.creator).size(), never.size());
}

} // namespace NBrenmark
