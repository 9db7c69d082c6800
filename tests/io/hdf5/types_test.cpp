// The compound types: what stands in a file at which byte. Offsets are counted by hand from the members' sizes and the
// gaps that decks have.
#include "io/hdf5/types.h"

#include "support/h5_tree.h"
#include <gtest/gtest.h>

namespace NBrenmark {

using namespace HDF5DATATYPES;

template <class TType>
static std::string layoutOf(quint32 version = currentFileVersion())
{
    return typeText(compoundOf<TType>(version).getId());
}

TEST(CompoundTypes, haveTheirMembersWhereDecksHaveThem)
{
    EXPECT_EQ(layoutOf<SAngVelAndPosType>(), "{angvel@0 f64[3], poa@24 f64[3]} 48");
    EXPECT_EQ(layoutOf<SBasicCmpdType>(), "{name@0 string[256], value@256 f64} 264");
    EXPECT_EQ(layoutOf<SBondParamCmpdType>(), "{key@0 string[512], normalStiffness@512 f64, shearStiffness@520 f64, "
                                              "normalStrength@528 f64, shearStrength@536 f64, bondRadius@544 f64} 552");
    EXPECT_EQ(layoutOf<SCohesionCmpdType>(), "{name1@0 string[256], name2@256 string[256], value@512 f64} 520");
    EXPECT_EQ(layoutOf<SDomainType>(), "{min@0 f64[3], max@24 f64[3], periodx@48 u8, periody@49 u8, periodz@50 u8} 56");
    EXPECT_EQ(layoutOf<SEcmCmpdType>(), "{name1@0 string[512], name2@512 string[512], constPullOffForce@1024 f64, "
                                        "surfaceEnergy@1032 f64, contactPlasticityRatio@1040 f64, "
                                        "slopeExponential@1048 f64, tensileExponential@1056 f64, "
                                        "tangentStiffMultiplier@1064 f64} 1072");
    EXPECT_EQ(layoutOf<SHystereticCmpdInterType>(), "{name1@0 string[256], name2@256 string[256], damping@512 f64, "
                                                    "stiffness@520 f64} 528");
    EXPECT_EQ(layoutOf<SInteractionType>(), "{key@0 string[512], restitution@512 f64, staticFriction@520 f64, "
                                            "rollingFriction@528 f64} 536");
    EXPECT_EQ(layoutOf<SLeedsAdhesionCmpdType>(),
              "{name1@0 string[512], name2@512 string[512], plasticStiffness@1024 f64, "
              "elasticStiffness@1032 f64, plasticAdhesiveStiffness@1040 f64, "
              "tangentialStiffness@1048 f64, initialAdhesiveForce@1056 f64, "
              "initialAdhesivePlasticForce@1064 f64} 1072");
    EXPECT_EQ(layoutOf<SMaterialType>(), "{name@0 string[256], poisson@256 f64, shearMod@264 f64, density@272 f64, "
                                         "workFunction@280 f64, type@288 u32} 296");
    EXPECT_EQ(layoutOf<SMaterialType>(makeVersion(30, 0, 3)),
              "{name@0 string[256], poisson@256 f64, shearMod@264 f64, density@272 f64, "
              "workFunction@280 f64} 288");
    EXPECT_EQ(layoutOf<SMovingPlaneMotionCmpdType>(),
              "{velocity@0 f64, accel@8 f64, startTime@16 f64, endTime@24 f64} 32");
    EXPECT_EQ(layoutOf<SNameCountType>(), "{name@0 string[256], count@256 u32} 260");
    EXPECT_EQ(layoutOf<SPointType>(), "{xyz@0 f64[3]} 24");
    EXPECT_EQ(layoutOf<SQuaternionType>(), "{wxyz@0 f64[4]} 32");
    EXPECT_EQ(layoutOf<SSphereType>(), "{name@0 string[256], contactRadius@512 f64, physicalRadius@520 f64, "
                                       "pos@528 f64[3]} 552");
    EXPECT_EQ(layoutOf<STwoDoublesType>(), "{first@0 f64, second@8 f64} 16");
}

} // namespace NBrenmark
