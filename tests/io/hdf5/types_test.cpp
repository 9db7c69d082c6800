// The compound types: what stands in a file at which byte. Offsets are counted by hand from the members' sizes and the
// gaps that decks have.
#include "io/hdf5/types.h"

#include <gtest/gtest.h>
#include <memory>
#include <ostream>

namespace NBrenmark {

using namespace HDF5DATATYPES;

struct SMember
{
    const char* name;
    std::size_t offset;
    const char* type; ///< d: a double, d3 and d4: arrays, s256 and s512: texts, u8, u32
};

struct STypeCase
{
    const char* name;
    std::size_t size;
    std::vector<SMember> members;
    std::shared_ptr<H5::CompType> type;
};

static std::ostream& operator<<(std::ostream& stream, const STypeCase& c) { return stream << c.name; }

static std::string kindOf(const H5::CompType& type, unsigned member)
{
    const std::size_t size = type.getMemberDataType(member).getSize();
    switch (type.getMemberClass(member)) {
    case H5T_FLOAT: return "d";
    case H5T_ARRAY: return "d" + std::to_string(size / sizeof(double));
    case H5T_STRING:
        return type.getMemberStrType(member).getStrpad() == H5T_STR_NULLTERM ? "s" + std::to_string(size) : "padded";
    case H5T_INTEGER:
        return (type.getMemberIntType(member).getSign() == H5T_SGN_NONE ? "u" : "i") + std::to_string(8 * size);
    default: return "other";
    }
}

class CompoundTypes : public testing::TestWithParam<STypeCase>
{
};

TEST_P(CompoundTypes, haveTheirMembersWhereDecksHaveThem)
{
    const H5::CompType& type = *GetParam().type;
    EXPECT_EQ(type.getSize(), GetParam().size);
    ASSERT_EQ(static_cast<std::size_t>(type.getNmembers()), GetParam().members.size());
    for (unsigned i = 0; i < GetParam().members.size(); ++i) {
        const SMember& member = GetParam().members[i];
        EXPECT_EQ(type.getMemberName(i), member.name);
        EXPECT_EQ(type.getMemberOffset(i), member.offset) << member.name;
        EXPECT_EQ(kindOf(type, i), member.type) << member.name;
    }
}

template <class TType>
static STypeCase typeCase(const char* name, std::size_t size, const std::vector<SMember>& members)
{
    return {name, size, members, std::make_shared<TType>()};
}

static const STypeCase typeCases[] = {
    typeCase<SAngVelAndPosType>("AngVelAndPos", 48, {{"angvel", 0, "d3"}, {"poa", 24, "d3"}}),
    typeCase<SBasicCmpdType>("BasicCmpd", 264, {{"name", 0, "s256"}, {"value", 256, "d"}}),
    typeCase<SBondParamCmpdType>("BondParamCmpd", 552,
                                 {{"key", 0, "s512"},
                                  {"normalStiffness", 512, "d"},
                                  {"shearStiffness", 520, "d"},
                                  {"normalStrength", 528, "d"},
                                  {"shearStrength", 536, "d"},
                                  {"bondRadius", 544, "d"}}),
    typeCase<SCohesionCmpdType>("CohesionCmpd", 520,
                                {{"name1", 0, "s256"}, {"name2", 256, "s256"}, {"value", 512, "d"}}),
    typeCase<SDomainType>(
        "Domain", 56,
        {{"min", 0, "d3"}, {"max", 24, "d3"}, {"periodx", 48, "u8"}, {"periody", 49, "u8"}, {"periodz", 50, "u8"}}),
    typeCase<SEcmCmpdType>("EcmCmpd", 1072,
                           {{"name1", 0, "s512"},
                            {"name2", 512, "s512"},
                            {"constPullOffForce", 1024, "d"},
                            {"surfaceEnergy", 1032, "d"},
                            {"contactPlasticityRatio", 1040, "d"},
                            {"slopeExponential", 1048, "d"},
                            {"tensileExponential", 1056, "d"},
                            {"tangentStiffMultiplier", 1064, "d"}}),
    typeCase<SHystereticCmpdInterType>(
        "HystereticCmpdInter", 528,
        {{"name1", 0, "s256"}, {"name2", 256, "s256"}, {"damping", 512, "d"}, {"stiffness", 520, "d"}}),
    typeCase<SInteractionType>(
        "Interaction", 536,
        {{"key", 0, "s512"}, {"restitution", 512, "d"}, {"staticFriction", 520, "d"}, {"rollingFriction", 528, "d"}}),
    typeCase<SLeedsAdhesionCmpdType>("LeedsAdhesionCmpd", 1072,
                                     {{"name1", 0, "s512"},
                                      {"name2", 512, "s512"},
                                      {"plasticStiffness", 1024, "d"},
                                      {"elasticStiffness", 1032, "d"},
                                      {"plasticAdhesiveStiffness", 1040, "d"},
                                      {"tangentialStiffness", 1048, "d"},
                                      {"initialAdhesiveForce", 1056, "d"},
                                      {"initialAdhesivePlasticForce", 1064, "d"}}),
    typeCase<SMaterialType>("Material", 296,
                            {{"name", 0, "s256"},
                             {"poisson", 256, "d"},
                             {"shearMod", 264, "d"},
                             {"density", 272, "d"},
                             {"workFunction", 280, "d"},
                             {"type", 288, "u32"}}),
    typeCase<v300004::SMaterialType>("MaterialBefore30_0_4", 288,
                                     {{"name", 0, "s256"},
                                      {"poisson", 256, "d"},
                                      {"shearMod", 264, "d"},
                                      {"density", 272, "d"},
                                      {"workFunction", 280, "d"}}),
    typeCase<SMovingPlaneMotionCmpdType>(
        "MovingPlaneMotionCmpd", 32,
        {{"velocity", 0, "d"}, {"accel", 8, "d"}, {"startTime", 16, "d"}, {"endTime", 24, "d"}}),
    typeCase<SNameCountType>("NameCount", 260, {{"name", 0, "s256"}, {"count", 256, "u32"}}),
    typeCase<SPointType>("Point", 24, {{"xyz", 0, "d3"}}),
    typeCase<SQuaternionType>("Quaternion", 32, {{"wxyz", 0, "d4"}}),
    typeCase<SSphereType>(
        "Sphere", 552,
        {{"name", 0, "s256"}, {"contactRadius", 512, "d"}, {"physicalRadius", 520, "d"}, {"pos", 528, "d3"}}),
    typeCase<STwoDoublesType>("TwoDoubles", 16, {{"first", 0, "d"}, {"second", 8, "d"}}),
};

INSTANTIATE_TEST_SUITE_P(All, CompoundTypes, testing::ValuesIn(typeCases),
                         [](const testing::TestParamInfo<STypeCase>& tested) { return tested.param.name; });

} // namespace NBrenmark
