// The layouts of records that only older decks hold: FormatPage holds those that are written. Offsets are counted by hand.
#include "io/hdf5/types.h"

#include "support/h5_tree.h"
#include <gtest/gtest.h>

namespace NBrenmark {

using namespace HDF5DATATYPES;

TEST(CompoundTypes, haveTheirMembersWhereOlderDecksHaveThem)
{
    EXPECT_EQ(typeText(compoundOf<SDomainType>(makeVersion(30, 0, 16)).getId()),
              "{min@0 f64[3], max@24 f64[3], periodx@48 u8, periody@49 u8, periodz@50 u8} 56");
    EXPECT_EQ(typeText(compoundOf<SMaterialType>(makeVersion(30, 0, 3)).getId()),
              "{name@0 string[256], poisson@256 f64, shearMod@264 f64, density@272 f64, workFunction@280 f64} 288");
}

} // namespace NBrenmark
