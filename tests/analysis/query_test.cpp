// Queries in their two forms: the stream of every class byte by byte, and the keys of the configuration.

#include "analysis/data_miner.h"
#include "analysis/entry_stream.h"
#include "analysis/query_kinds.h"
#include "analysis/query_map.h"
#include "config/config_manager.h"
#include "support/log_capture.h"
#include "support/settings_entries.h"

#include <gtest/gtest.h>

namespace NBrenmark {
namespace {

using NConfig::CConfigHandle;
using NConfig::CConfigManager;
using NConfig::CKeyPath;

struct SKindCase
{
    const char* identifier;
    CBytes added;
};

const SKindCase kindCases[] = {
    {"Standard", CBytes()},
    {"Total", CBytes().i8(1)},
    {"Total Over Time", CBytes().i8(1)},
    {"CoG", CBytes()},
    {"Average", CBytes()},
    {"Maximum", CBytes()},
    {"Minimum", CBytes()},
    {"Maximum & Minimum", CBytes()},
    {"Distribution", CBytes().i32(17)},
    {"Contact Distribution", CBytes().i32(17)},
    {"Time Distribution", CBytes().i32(17).f64(0.5).f64(2.5).text("Average")},
    {"Two Attribute", CBytes().text("Total").text("Average").text("Particle")},
    {"Mass Flow Rate", CBytes().text("Total")},
    {"Total Pressure", CBytes()},
    {"Density", CBytes().i32(3)},
};

struct SRead
{
    SRead(QueryMap& map, const CBytes& bytes, quint32 version)
    {
        SSource source(bytes, version);
        result = map.read(source.stream, nullptr);
        left = source.buffer.bytesAvailable();
    }
    bool result;
    qint64 left;
};

TEST(QueryMap, carriesEveryClassByteForByte)
{
    std::vector<CBytes> queries;
    for (const SKindCase& c : kindCases)
        queries.push_back(CBytes().text(c.identifier) + queryBytes() + c.added);
    const CBytes bytes = queryMapBytes({{"", {}}, {"First", queries}, {"Second", {queries[4]}}});
    QueryMap map(eSelectionQueries);
    const SRead read(map, bytes + CBytes::garbage(32), current);
    ASSERT_TRUE(read.result);
    EXPECT_EQ(read.left, 32);
    EXPECT_EQ(map.queryCount(), 16);
    EXPECT_EQ(written(map), bytes);
    const CQuery& first = *map.sections()["First"].first();
    EXPECT_EQ(first.secondaryMaximum, 4);
    EXPECT_EQ(first.reference2.distance, 6);
    EXPECT_EQ(first.secondaryComponent, "Y");
    EXPECT_EQ(first.typeName, "Ball");
    EXPECT_TRUE(first.collate && !first.useRange && first.useRange2 && first.contactQuery);

    QueryMap empty(eSelectionQueries);
    EXPECT_EQ(written(empty), CBytes().i32(0));
    for (qint64 length = 0; length < bytes.size(); ++length)
        EXPECT_THROW(SRead(map, bytes.first(length), current), std::exception) << length;
}

TEST(QueryMap, readsWhatAVersionStoresAndNotOneByteMore)
{
    const CBytes density = queryMapBytes({{"S", {CBytes().text("Density") + queryBytes()}}});
    for (const quint32 version :
         {makeVersion(20, 0, 5), makeVersion(30, 0, 17), makeVersion(30, 0, 18), makeVersion(30, 0, 19), current}) {
        const std::string name = versionText(version).toStdString();
        QueryMap map(eSelectionQueries);
        const SRead read(map, density + CBytes().i32(3) + CBytes::garbage(8), version);
        ASSERT_TRUE(read.result) << name;
        EXPECT_EQ(read.left, version >= makeVersion(30, 0, 19) ? 8 : 12) << name;
        const auto& query = dynamic_cast<CDensityQuery&>(*map.sections()["S"].first());
        EXPECT_EQ(query.densityKind, version >= makeVersion(30, 0, 19) ? 3 : 0) << name;
        EXPECT_EQ(query.secondaryComponent.isEmpty(), version < makeVersion(30, 0, 18)) << name;
        EXPECT_EQ(query.typeName.isEmpty(), version < makeVersion(30, 0, 18)) << name;
        EXPECT_EQ(query.group, "Walls") << name;
    }
}

TEST(QueryMap, endsAtAQueryOfNoClass)
{
    QueryMap map(eSelectionQueries);
    CLogCapture log;
    const SRead read(map, queryMapBytes({{"S", {CBytes().text("Median") + queryBytes()}}}), current);
    EXPECT_FALSE(read.result);
    EXPECT_NE(log.text().find("\"Median\""), std::string::npos);
    EXPECT_EQ(createQuery("standard", 0), nullptr) << "by the exact word";
    EXPECT_TRUE(createQuery("Standard", 1)->contactQuery);
}

TEST(QueryMap, knowsASectionByItsQueriesName)
{
    QueryMap map(eExportQueries);
    auto query = createQuery("Total Over Time", 0);
    query->id = "Total 1";
    EXPECT_EQ(query->clone()->name(), "Total Over Time");
    map.add("Feed", std::move(query));
    EXPECT_EQ(map.sectionOf("Total 1"), "Feed");
    EXPECT_EQ(map.sectionOf("Total 2"), "");
}

// ---------------------------------------------------------------- the key form

/// All keys below a path, as "KEY=KIND:value".
std::vector<std::string> keysBelow(CConfigManager& manager, const CKeyPath& path)
{
    std::vector<std::string> keys;
    for (const CKeyPath& name : manager.childKeys(path)) {
        const CKeyPath key(path, name);
        const std::any& value = manager.findNode(key, false)->value;
        if (const NConfig::SValueKind* kind = NConfig::valueKindOf(value))
            keys.push_back(key.toString() + "=" + kind->name + ":" + kind->encode(value));
        for (const std::string& below : keysBelow(manager, key))
            keys.push_back(below);
    }
    return keys;
}

TEST(QueryMap, standsInTheConfigurationUnderItsKeys)
{
    CConfigManager manager;
    CConfigHandle handle(manager, CKeyPath::fromString("Q"));
    QueryMap map(eExportQueries);
    auto query = std::make_unique<CTimeDistributionQuery>();
    query->id = "Mine";
    query->queryType = "Average";
    query->endTime = 2.5;
    query->reference1.type = 4;
    query->axisEnd = {1, 2, 3};
    map.add("Feed", std::move(query));
    map.writeConfiguration(handle);
    const std::vector<std::string> keys = keysBelow(manager, CKeyPath());
    for (const char* expected :
         {"Q:00001:SECTION=QT STRING:Feed", "Q:00001:QUERY TYPE=QT STRING:Time Distribution",
          "Q:00001:QUERY TYPE:QUERY TYPE=QT STRING:Average", "Q:00001:ID=QT STRING:Mine", "Q:00001:END TIME=DOUBLE:2.5",
          "Q:00001:REF 1:TYPE=INT:4", "Q:00001:COLLATE=BOOLEAN:FALSE"})
        EXPECT_NE(std::find(keys.begin(), keys.end(), expected), keys.end()) << expected;
    EXPECT_NE(manager.findNode(CKeyPath::fromString("Q:00001:USE AXIS:USE AXIS END POINT"), false), nullptr);
    map.writeConfiguration(handle);
    EXPECT_EQ(keysBelow(manager, CKeyPath()), keys) << "written again, not once more";

    QueryMap again(eExportQueries);
    again.readConfiguration(handle);
    ASSERT_EQ(again.queryCount(), 1);
    const auto& read = dynamic_cast<CTimeDistributionQuery&>(*again.sections()["Feed"].first());
    EXPECT_EQ(read.queryType, "Average");
    EXPECT_EQ(read.axisEnd, C3DPoint(1, 2, 3));
    EXPECT_EQ(keysBelow(manager, CKeyPath()), keys);
    CConfigHandle own(manager, CKeyPath::fromString("Q:00001"));
    again.sections()["Feed"].first()->removeConfiguration(own);
    EXPECT_TRUE(manager.childKeys(CKeyPath::fromString("Q")).empty());
}

TEST(QueryMap, keepsToDefaultsAndLeavesUnknownKeysAlone)
{
    CConfigManager manager;
    manager.value<QString>(CKeyPath::fromString("Q:00007:SECTION")) = "S";
    manager.value<QString>(CKeyPath::fromString("Q:00007:QUERY TYPE")) = "Total";
    manager.value<QString>(CKeyPath::fromString("Q:00008:QUERY TYPE")) = "Median";
    CConfigHandle handle(manager, CKeyPath::fromString("Q"));
    QueryMap map(eExportQueries);
    CLogCapture log;
    map.readConfiguration(handle);
    EXPECT_EQ(map.queryCount(), 1);
    EXPECT_NE(log.text().find("Q:00008"), std::string::npos);
    EXPECT_NE(manager.findNode(CKeyPath::fromString("Q:00007:USE ID COUNTER"), false), nullptr)
        << "a missing key is made";
    map.writeConfiguration(handle);
    EXPECT_EQ(manager.childKeys(CKeyPath::fromString("Q")).size(), 2u);

    manager.nodeValue(CKeyPath::fromString("Q:00007:MIN")) = QString("much");
    EXPECT_THROW(map.readConfiguration(handle), NConfig::CConfigException);
}

TEST(DataMiners, readTheQueriesOfEveryExport)
{
    CConfigManager manager;
    CDataMiners miners(manager);
    for (const char* name : {"00001", "Mine"}) {
        const std::string query = std::string("ANALYST:DATA EXPORT:") + name + ":DATA MINER:QUERIES:00001:";
        manager.value<QString>(CKeyPath::fromString(query + "SECTION")) = "S";
        manager.value<QString>(CKeyPath::fromString(query + "QUERY TYPE")) = "Distribution";
    }
    manager.value<QString>(CKeyPath::fromString("ANALYST:DATA EXPORT:Other:NAME")) = "none";
    ASSERT_TRUE(manager.loadAll());
    ASSERT_EQ(miners.miners().size(), 2u);
    EXPECT_EQ(miners.miners()[1]->queries().sections()["S"].first()->name(), "Distribution");
    const CKeyPath interval = CKeyPath::fromString("ANALYST:DATA EXPORT:Mine:DATA MINER:QUERIES:00001:INTERVALS");
    EXPECT_NE(manager.findNode(interval, false), nullptr) << "a missing key gets its default";
}

} // namespace
} // namespace NBrenmark
