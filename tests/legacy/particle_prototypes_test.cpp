// Records of particles become types and particles. What is stored is made by hand; lengths go by the scale, volumes and
// masses by its cube, inertias by its fifth power.
#include "legacy/particle_prototypes.h"

#include "model/creator_data.h"
#include "support/log_capture.h"

#include <gtest/gtest.h>

namespace NBrenmark {

using namespace NLegacySupport;

/// As a deck holds a particle of that size; of size 1 it is 2 kg, 3 m^3 and has a radius of 0.5 m.
static CParticlePrototype recordOf(const char* name, int id, double scale)
{
    CParticlePrototype record;
    record.name = name;
    record.materialName = "m";
    record.id = id;
    record.scale = scale;
    const double s = scale == 0.0 ? 1.0 : scale;
    record.mass = 2 * s * s * s;
    record.volume = 3 * s * s * s;
    record.inertia = C3DPoint(s * s * s * s * s, 0, 0);
    record.position = C3DPoint(id, 0, 0);
    record.elements.resize(1);
    record.elements[0].contactRadius = record.elements[0].physicalRadius = 0.5 * s;
    return record;
}

/// "A:m*2 B:m(1)*0": the types, their materials and how many particles each has.
static std::string typesOf(const CParticleTypes& types)
{
    std::string text;
    for (const auto& type : types.types)
        text += (text.empty() ? "" : " ") + type->name + ":" + type->materialName.toStdString() + "*" +
                std::to_string(type->liveCount());
    return text;
}

TEST(ParticlePrototypes, areOneTypeWhereTheyDifferByTheirScaleAlone)
{
    struct SCase
    {
        const char* what;
        std::vector<std::pair<const char*, double>> records; ///< name and scale
        const char* types;
        const char* told;
    };
    const SCase cases[] = {
        {"two sizes", {{"A", 1.0}, {"A", 2.0}}, "A:m*2 B:m*0", ""},
        {"a size that is as good as 1", {{"A", 1.0 + 1e-13}, {"A", 1.0}}, "A:m*2 B:m*0", ""},
        {"in the order of their first particles", {{"B", 0.5}, {"A", 3.0}, {"B", 1.5}}, "B:m*2 A:m*1", ""},
        {"a type that the model lacks", {{"C", 1.0}, {"B", 1.0}}, "C:m*1 B:m*1 A:m*0", ""},
        {"no size", {{"A", 0.0}}, "A:m*1 B:m*0", "1 particle of scale 0 is taken as of scale 1."},
        {"none", {}, "A:m*0 B:m*0", ""},
    };
    for (const SCase& c : cases) {
        CCreatorData creator{SPropertyManagers()};
        CParticlePrototypeMap prototypes;
        for (const char* name : {"B", "A"})
            prototypes.insert(name, recordOf(name, 0, 1.0));
        fillFromPrototypes(creator.particleTypes, prototypes);
        CParticlePrototypeRecords records;
        for (const auto& [name, scale] : c.records)
            records.push_back(recordOf(name, 1 + static_cast<int>(records.size()), scale));
        CParticleTypes types(nullptr);
        const CLogCapture log;
        fillFromRecords(types, records, creator);
        EXPECT_EQ(typesOf(types), c.types) << c.what;
        EXPECT_EQ(log.text(), *c.told == 0 ? "" : "WARNING Legacy read: " + std::string(c.told) + "\n") << c.what;
        EXPECT_EQ(types.maxId, c.records.size());
        for (quint32 i = 0; i < c.records.size(); ++i) {
            quint32 type = 0;
            quint32 slot = 0;
            ASSERT_TRUE(types.locate(i + 1, type, slot)) << c.what;
            const double scale = c.records[i].second;
            EXPECT_EQ(types.types[type]->scale[slot], scale == 0.0 ? 1.0 : scale) << c.what;
            EXPECT_EQ(types.types[type]->position[slot].x, i + 1.0) << c.what;
            EXPECT_NEAR(types.types[type]->rawMass, 2.0, 1e-11) << c.what;
            EXPECT_NEAR(types.types[type]->rawInertia.x, 1.0, 1e-11) << c.what;
            EXPECT_NEAR(types.types[type]->spheres[0].physicalRadius, 0.5, 1e-12) << c.what;
        }
    }
}

// Records name the materials that their types had: what an upgrade did to the model makes no second type.
TEST(ParticlePrototypes, areOfTheirTypeWhateverMaterialAnUpgradeGaveIt)
{
    CCreatorData creator{SPropertyManagers()};
    CParticlePrototypeMap prototypes;
    for (const char* name : {"A", "B"})
        prototypes.insert(name, recordOf(name, 0, 1.0));
    fillFromPrototypes(creator.particleTypes, prototypes);
    creator.particleTypes.find("B")->materialName = "m(1)";
    creator.materialsBefore["B"] = "m";
    CParticlePrototypeRecords records;
    records.push_back(recordOf("A", 1, 1.0));
    records.push_back(recordOf("B", 2, 2.0));
    CParticleTypes types(nullptr);
    fillFromRecords(types, records, creator);
    EXPECT_EQ(typesOf(types), "A:m*1 B:m*1");
}

// Of one name there may be several: by it, the last is found, which has to be the one that the model defines.
TEST(ParticlePrototypes, ofOneNameTheDefinedOneIsFound)
{
    CCreatorData creator{SPropertyManagers()};
    CParticlePrototypeMap prototypes;
    for (const char* key : {"1", "2"}) { // a stored name takes the place of the key
        prototypes.insert(key, recordOf("A", 0, 1.0));
        prototypes[key].mass = *key == '1' ? 2 : 9;
    }
    fillFromPrototypes(creator.particleTypes, prototypes);
    CParticlePrototypeRecords records;
    for (const int id : {1, 2, 3, 0, -7}) {
        records.push_back(recordOf("A", id, 1.0));
        records.back().mass = id == 3 ? 9 : 2;
    }
    CParticleTypes types(nullptr);
    const CLogCapture log;
    fillFromRecords(types, records, creator);
    EXPECT_EQ(log.text(), "WARNING Legacy read: 2 particles without an id dropped\n");
    EXPECT_EQ(typesOf(types), "A:m*2 A:m*1") << "changed over for the first definition, and back for the second";
    EXPECT_EQ(types.find("A")->rawMass, 9);
    quint32 type = 0;
    quint32 slot = 0;
    ASSERT_TRUE(types.locate(3, type, slot));
    EXPECT_EQ(type, 1u);
}

} // namespace NBrenmark
