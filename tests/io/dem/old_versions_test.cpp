// Every file version below 20.0.16 that reads differently from the one before it, and that one. What is read has its values
// in golden/decks.
#include "io/dem/dem_testing.h"
#include "support/legacy_deck_geometry.h"
#include "support/old_deck.h"

namespace NBrenmark {
class OldVersion : public testing::TestWithParam<quint32>
{
};

TEST_P(OldVersion, isReadToTheLastByteOfBothBlocks)
{
    COwnFrame own;
    finalizeProperty(own.particle, "Heat", {293.0});
    const CBytes model = oldCreatorBytes(GetParam());
    const CBytes timestep = oldTimestepBytes(GetParam());
    EXPECT_EQ(consumedBy<CDemCreatorDataReader>(own.frame.creator, model), model.size());
    EXPECT_EQ(consumedBy<CDemTimestepDataReader>(own.frame.timestep, timestep), timestep.size());
    const CParticleType& type = *own.frame.timestep.particleTypes.types.at(0);
    const bool storesProperties = since(GetParam(), 13, 0, 5) && !since(GetParam(), 20, 0, 0);
    if (!since(GetParam(), 20, 0, 0)) { // the second particle's, which a deck without settings can't have
        EXPECT_EQ(type.customProperties.lists[0]->item(1)[0], storesProperties ? 302.0 : 293.0);
    }
}

/// Each version of the list and the one below it.
static std::vector<quint32> versionsAndThoseBelow()
{
    std::vector<quint32> versions;
    for (const quint32 version : oldVersions)
        for (const quint32 next : {version - 1, version})
            if (versions.empty() || versions.back() < next)
                versions.push_back(next);
    versions.push_back(makeVersion(20, 0, 15));
    versions.push_back(makeVersion(3, 0, 5)); // old numbering
    return versions;
}

INSTANTIATE_TEST_SUITE_P(Gates, OldVersion, testing::ValuesIn(versionsAndThoseBelow()), [](const auto& version) {
    return versionText(version.param).replace('.', '_').toStdString();
});

} // namespace NBrenmark
