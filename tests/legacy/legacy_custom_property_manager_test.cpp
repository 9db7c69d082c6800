// Property files of old decks. Their bytes are put together by hand.

#include "legacy/legacy_custom_property_manager.h"

#include "core/log.h"
#include "support/bytes.h"
#include "support/temp_folder.h"

#include <gtest/gtest.h>

namespace NBrenmark::NLegacySupport {
namespace {

CBytes head(qint32 lastFinalised, qint32 count)
{
    return CBytes().text("Property Manager Configuration").i32(1).i32(lastFinalised).i32(count);
}

CBytes record(const char* name, qint32 elements, double value, qint32 dataType = 0)
{
    return CBytes().text(name).i32(dataType).i32(elements).i32(20).f64(value);
}

/// A manager that held "Superseded" before it met the file.
class CRead
{
public:
    explicit CRead(const CBytes& bytes) : CRead()
    {
        CPersistentLogger logger(eWarning);
        addLogModule(&logger);
        manager.setPropertyFilePath(folder.write("a.ppf", bytes.bytes()).toStdString());
        result = manager.readPropertyFile();
        clearLogModules();
        messages = logger.messages().size();
    }
    CRead() : manager("Particle Properties", eParticleOwner)
    {
        auto old = std::make_unique<CCustomPropertyMetaData>("Superseded", eDoubleProperty, 1u, 0u);
        manager.addProperty(old);
        manager.lastFinalisedPropertyIndex = 0;
    }

    CTempFolder folder;
    CLegacyCustomPropertyManager manager;
    int result = -1;
    size_t messages = 0;
};

TEST(LegacyPropertyFile, replacesWhatTheSettingsBrought)
{
    const CRead read(head(1, 3) + record("Moisture", 1, 0.5) + record("Two", 2, 1.5) + record("Much", 300, 2));
    EXPECT_EQ(read.result, ePropertyFileRead);
    EXPECT_EQ(read.messages, 0u);
    ASSERT_EQ(read.manager.propertyCount(), 3u);
    EXPECT_EQ(read.manager.finalizedCount(), 2u);
    EXPECT_FALSE(read.manager.isModified());
    const CCustomPropertyMetaData& much = *read.manager.property("Much");
    EXPECT_EQ(much.numberOfElements, 256u);
    EXPECT_EQ(much.initialValue(255), 2.0);
    EXPECT_EQ(much.unitsType, 20u);
}

TEST(LegacyPropertyFile, finalizesNoMoreThanItDefinesAndReportsTheRest)
{
    struct SCase
    {
        CBytes bytes;
        unsigned int count, finalized;
        size_t messages;
    };
    const CBytes one = record("Moisture", 1, 0.5);
    const CBytes two = one + record("Two", 2, 1.5);
    const SCase cases[] = {
        {head(-1, 0), 0, 0, 0},      {head(-1, -1), 0, 0, 0},      {head(-1, -2147483647), 0, 0, 0},
        {head(0, 1) + two, 1, 1, 1}, {head(-1, 2) + two, 2, 0, 0}, {head(0, 2) + two, 2, 1, 0},
        {head(1, 2) + two, 2, 2, 0}, {head(7, 2) + two, 2, 2, 1},  {head(-9, 2) + two, 2, 0, 1},
    };
    for (const SCase& c : cases) {
        const CRead read(c.bytes);
        const long row = &c - cases;
        EXPECT_EQ(read.result, ePropertyFileRead) << row;
        EXPECT_EQ(read.manager.propertyCount(), c.count) << row;
        EXPECT_EQ(read.manager.finalizedCount(), c.finalized) << row;
        EXPECT_FALSE(read.manager.isModified()) << row;
        EXPECT_EQ(read.messages, c.messages) << row;
    }
}

TEST(LegacyPropertyFile, thatIsNotThereLeavesTheManagerAlone)
{
    CRead read;
    EXPECT_EQ(read.manager.readPropertyFile(), ePropertyFileRead) << "no path, nothing to read";
    read.manager.setPropertyFilePath(read.folder.path("none.ppf").toStdString());
    EXPECT_EQ(read.manager.readPropertyFile(), ePropertyFileMissing);
    read.manager.setPropertyFilePath(read.folder.path().toStdString());
    EXPECT_EQ(read.manager.readPropertyFile(), ePropertyFileNotOpened) << "a folder";
    EXPECT_EQ(read.manager.propertyCount(), 1u);
    EXPECT_EQ(read.manager.finalizedCount(), 1u);
}

TEST(LegacyPropertyFile, isRefusedWholeForAnyFault)
{
    const CBytes good = head(1, 2) + record("Moisture", 1, 0.5) + record("Two", 2, 1.5);
    std::vector<CBytes> refused = {
        good.with(6, CBytes().i8('X')),
        good.with(0, CBytes().i32(0x7FFFFFFE)),
        head(0, 2) + record("Moisture", 1, 0.5) + record("No_name", 1, 0.5),
        head(0, 2) + record("Twice", 1, 0.5) + record("Twice", 1, 0.5),
        head(0, 1) + record("", 1, 0.5),
        head(0, 1) + record("Negative", -1, 0.5),
        head(0, 0x7FFFFFFF) + record("Moisture", 1, 0.5),
        head(0, 1) + CBytes().i32(0x7FFFFFFE).ascii("a name of two gigabytes"),
    };
    for (qint64 length = 0; length < good.size(); ++length)
        refused.push_back(good.first(length));
    for (const CBytes& bytes : refused) {
        const CRead read(bytes);
        EXPECT_EQ(read.result, ePropertyFileRefused) << bytes.size();
        EXPECT_EQ(read.manager.propertyCount(), 0u) << bytes.size();
        EXPECT_EQ(read.manager.lastFinalisedPropertyIndex, -1) << bytes.size();
        EXPECT_EQ(read.messages, 1u) << bytes.size();
    }
}

} // namespace
} // namespace NBrenmark::NLegacySupport
