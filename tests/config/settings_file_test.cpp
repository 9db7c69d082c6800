// The blocks of the settings file: a damaged one costs itself, every file is read to an end, and a saved file is
// the bytes that it should be. The entries here hold a list of numbers: a count, then as many.

#include "config/settings_file.h"

#include "config/file_replacer.h"
#include "core/cause.h"
#include "core/log.h"
#include "core/progress.h"
#include "core/version.h"
#include "core/versioned_stream.h"
#include "support/settings_file.h"
#include "support/temp_folder.h"

#include <gtest/gtest.h>

namespace NBrenmark {
namespace {

constexpr qint32 returnsFalse = -1;
constexpr qint32 throwsError = -2;
constexpr qint32 isUnsupported = -3;

class CNumbers : public ISimulationSettingsEntry
{
public:
    bool read(CVersionedStream& stream, IProgressController*) override
    {
        numbers.clear();
        version = stream.fileVersion();
        qint32 count = 0;
        stream >> count;
        if (count == throwsError)
            throw std::length_error("too many");
        if (count == isUnsupported)
            throw caused_error(eCauseUnsupported, "numbers of a later kind");
        if (count < 0)
            return false;
        for (qint32 i = 0; i < count && stream.status() == QDataStream::Ok; ++i) {
            qint32 number = 0;
            stream >> number;
            numbers.push_back(number);
        }
        setModified(false);
        return true;
    }
    bool write(CVersionedStream& stream, IProgressController*) override
    {
        ++writes;
        stream << qint32(numbers.size());
        for (const qint32 number : numbers)
            stream << number;
        return !failsToWrite;
    }
    bool isModified() const override { return modified; }
    void setModified(bool value) override { modified = value; }
    void clear(bool notify) override
    {
        numbers.clear();
        setModified(notify);
    }

    std::vector<qint32> numbers;
    quint32 version = 0;
    bool modified = false;
    bool failsToWrite = false;
    int writes = 0;
};

/// Three entries: 1 and 2, and 4 as a custom property.
class CThreeEntries
{
public:
    CThreeEntries() : file({{1, "ones", &one, false}, {4, "fours", &four, true}, {2, "twos", &two, false}}) {}

    bool load(const CBytes& bytes, IProgressController* progress = nullptr)
    {
        CPersistentLogger logger(eWarning);
        addLogModule(&logger);
        const bool result = file.loadSettings(folder.write("a.ess", bytes.bytes()), progress);
        clearLogModules();
        messages = logger.messages();
        return result;
    }

    bool save(bool force = true, bool customProperties = true)
    {
        CPersistentLogger logger(eWarning);
        addLogModule(&logger);
        const bool result = file.saveSettings(folder.path("b.ess"), nullptr, force, customProperties);
        waitForCopies();
        clearLogModules();
        messages = logger.messages();
        return result;
    }

    std::string logText() const
    {
        std::string text;
        for (const SLogMessage& message : messages)
            text += std::get<2>(message) + "\n";
        return text;
    }

    CTempFolder folder;
    CNumbers one, two, four;
    CSettingsFile file;
    std::vector<SLogMessage> messages;
};

using Numbers = std::vector<qint32>;

CBytes numbers(const Numbers& values)
{
    CBytes payload;
    payload.i32(qint32(values.size()));
    for (const qint32 value : values)
        payload.i32(value);
    return payload;
}

CBytes goodBlock(qint32 identifier)
{
    return settingsBlock(identifier, numbers({10 * identifier, 10 * identifier + 1}));
}

/// A block with a length field of its own.
CBytes blockOfLength(qint32 identifier, qint32 length, const CBytes& payload)
{
    return settingsBlock(identifier, payload).with(10, CBytes().i32(length));
}

const CBytes header = settingsHeader(makeVersion(27, 0, 3));
constexpr const char* retry = "\nWill attempt to restart reading with next settings entry";

struct SDamageCase
{
    const char* name;
    CBytes blocks;
    Numbers one, two, four;
    const char* told; ///< null if nothing is
};

TEST(SettingsFile, losesNoBlockButTheDamagedOne)
{
    const Numbers none, ones{10, 11}, twos{20, 21}, fours{40, 41};
    const char* const noStart = "block start marker not found at expected position)";
    const char* const noEnd = "block end marker not found at expected position)";
    const char* const wrongAmount = "settings entry read wrong amount of data)";
    const char* const unknown = "unkown settings entry ID)";
    const CBytes all = goodBlock(1) + goodBlock(2) + goodBlock(4);
    const CBytes two = numbers({20, 21});
    const SDamageCase cases[] = {
        {"whole", all, ones, twos, fours, nullptr},
        {"another order", goodBlock(4) + goodBlock(1), ones, none, fours, nullptr},
        {"no block", CBytes(), none, none, none, nullptr},
        {"start marker damaged", all.with(40, CBytes().ascii("ESX_BLOCK_")), ones, none, fours, noStart},
        {"end marker damaged", all.with(70, CBytes().ascii("ESX_END___")), ones, none, fours, noEnd},
        {"length too small", goodBlock(1) + blockOfLength(2, 12, two) + goodBlock(4), ones, none, fours, wrongAmount},
        {"length too large", goodBlock(1) + blockOfLength(2, 25, two) + goodBlock(4), ones, none, fours, wrongAmount},
        {"length beyond the next block", goodBlock(1) + blockOfLength(2, 45, two) + goodBlock(4), ones, none, none,
         wrongAmount},
        {"length beyond the file", goodBlock(1) + blockOfLength(2, 0x7FFFFFFF, two) + goodBlock(4), ones, none, fours,
         wrongAmount},
        {"length of nothing", goodBlock(1) + blockOfLength(2, 0, two) + goodBlock(4), ones, none, fours, wrongAmount},
        {"length that leads back", goodBlock(1) + blockOfLength(2, -40, two) + goodBlock(4), ones, none, fours,
         wrongAmount},
        {"least length", goodBlock(1) + blockOfLength(2, qint32(0x80000000u), two) + goodBlock(4), ones, none, fours,
         wrongAmount},
        {"identifier 7", goodBlock(1) + settingsBlock(7, two) + goodBlock(4), ones, none, fours, unknown},
        {"identifier 0", goodBlock(1) + settingsBlock(0, two) + goodBlock(4), ones, none, fours, unknown},
        {"identifier 7 with a block inside", settingsBlock(7, goodBlock(2)) + goodBlock(4), none, twos, fours, unknown},
        {"entry gives false", goodBlock(1) + settingsBlock(2, CBytes().i32(returnsFalse)) + goodBlock(4), ones, none,
         fours, "Could not read settings entry (see previous messages for reason)"},
        {"entry throws", goodBlock(1) + settingsBlock(2, CBytes().i32(throwsError)) + goodBlock(4), ones, none, fours,
         "left out, 4 bytes: too many): Could not read settings entry (unknown reason)\nWill"},
        {"entry of 2^31 numbers", goodBlock(1) + settingsBlock(2, CBytes().i32(0x7FFFFFFF)), ones, none, none,
         "Could not read settings entry"},
        {"cut in the payload", all.first(100), ones, twos, none, "Could not read settings entry"},
        {"cut in the length", all.first(92), ones, twos, none, unknown},
        {"cut in the end marker", all.first(118), ones, twos, none, noEnd},
        {"partial marker at the end", all + CBytes().ascii("ESS_BLOC"), ones, twos, fours, noStart},
        {"false starts before a block", goodBlock(1) + CBytes().ascii("ESS_EESS_BLOCESS_BLOCK") + goodBlock(2), ones,
         twos, none, noStart},
        {"garbage between blocks", goodBlock(1) + CBytes::garbage(500) + goodBlock(4), ones, none, fours, noStart},
    };
    for (const SDamageCase& c : cases) {
        CThreeEntries entries;
        EXPECT_TRUE(entries.load(header + c.blocks)) << c.name << entries.logText();
        EXPECT_EQ(entries.one.numbers, c.one) << c.name;
        EXPECT_EQ(entries.two.numbers, c.two) << c.name;
        EXPECT_EQ(entries.four.numbers, c.four) << c.name;
        EXPECT_EQ(entries.file.isDirty(), c.told != nullptr) << c.name;
        if (!c.told) {
            EXPECT_EQ(entries.logText(), "") << c.name;
            continue;
        }
        ASSERT_FALSE(entries.messages.empty()) << c.name;
        EXPECT_EQ(std::get<0>(entries.messages[0]), int(eWarning)) << c.name;
        EXPECT_NE(entries.logText().find(c.told), std::string::npos) << c.name << ": " << entries.logText();
        EXPECT_NE(entries.logText().find(retry), std::string::npos) << c.name;
        // 28 bytes of header, 40 of the first block.
        EXPECT_NE(entries.logText().find(c.told == wrongAmount ? "a.ess, twos: Block at byte 68 (" : "Block at byte "),
                  std::string::npos)
            << c.name << entries.logText();
    }
}

TEST(SettingsFile, isReadToAnEndWhereverItIsCutOrDamaged)
{
    const CBytes whole = header + goodBlock(1) + goodBlock(2) + goodBlock(4);
    for (qint64 length = header.size(); length <= whole.size(); ++length) {
        CThreeEntries entries;
        EXPECT_TRUE(entries.load(whole.first(length))) << length;
        EXPECT_EQ(entries.one.numbers.size(), length >= header.size() + 40 ? 2u : 0u) << length;
        EXPECT_EQ(entries.two.numbers.size(), length >= header.size() + 80 ? 2u : 0u) << length;
    }
    for (qint64 at = header.size(); at < whole.size(); ++at) {
        for (const int byte : {0x00, 0x7F, 0x80, 0xFF, int('E')}) {
            CThreeEntries entries;
            EXPECT_TRUE(entries.load(whole.with(at, CBytes().i8(byte)))) << at << " " << byte;
            EXPECT_GE(entries.one.numbers.size() + entries.two.numbers.size() + entries.four.numbers.size(), 2u)
                << at << " " << byte << ": two blocks were whole, and a length may hide one of them";
        }
    }
}

TEST(SettingsFile, ofBlockStartsAloneComesToAnEndAndDoesNotFillTheLog)
{
    CBytes blocks;
    for (int i = 0; i < 5000; ++i)
        blocks.ascii("ESS_BLOCK_").i32(-i).i32(1 + i % 2).i32(0);
    CThreeEntries entries;
    EXPECT_TRUE(entries.load(header + blocks));
    ASSERT_EQ(entries.messages.size(), 101u);
    EXPECT_NE(std::get<2>(entries.messages.back()).find("4900 more damaged blocks"), std::string::npos);
}

TEST(SettingsFile, thatIsMissingLeavesTheEntriesEmpty)
{
    CThreeEntries entries;
    entries.one.numbers = {1};
    EXPECT_TRUE(entries.file.loadSettings(entries.folder.path("none.ess"), nullptr));
    EXPECT_TRUE(entries.one.numbers.empty());
    EXPECT_FALSE(entries.file.isDirty());

    CPersistentLogger logger(eWarning);
    addLogModule(&logger);
    EXPECT_TRUE(entries.file.loadSettings(entries.folder.path(), nullptr)) << "a folder can't be opened";
    clearLogModules();
    EXPECT_EQ(logger.messages().size(), 1u) << "but it is there, so the log reports it";
}

TEST(SettingsFile, isRefusedForItsHeader)
{
    const CBytes whole = header + goodBlock(1);
    const std::pair<const char*, CBytes> cases[] = {
        {"empty", CBytes()},
        {"7 bytes", whole.first(7)},
        {"cut in the version", whole.first(22)},
        {"cut in the edition", whole.first(26)},
        {"another marker", whole.with(5, CBytes().i8('X'))},
        {"a marker of 2^31 bytes", whole.with(0, CBytes().i32(0x7FFFFFFE))},
        {"a null marker", whole.with(0, CBytes().u32(0xFFFFFFFFu))},
    };
    for (const auto& [name, bytes] : cases) {
        CThreeEntries entries;
        EXPECT_FALSE(entries.load(bytes)) << name;
        EXPECT_TRUE(entries.one.numbers.empty()) << name;
        ASSERT_EQ(entries.messages.size(), 1u) << name;
        EXPECT_EQ(std::get<0>(entries.messages[0]), int(eError)) << name;
    }
    CThreeEntries entries;
    entries.load(whole.with(5, CBytes().i8('X')));
    EXPECT_NE(entries.logText().find("a.ess: Corrupt Settings file (File marker does not match)"), std::string::npos);
}

struct SHeaderCase
{
    quint32 written;
    bool hasEdition;
    quint32 seen;
};

TEST(SettingsFile, passesTheVersionToItsEntries)
{
    const SHeaderCase cases[] = {
        {makeVersion(2, 4, 57), false, makeVersion(2, 4, 57)}, {makeVersion(3, 0, 15), false, makeVersion(20, 0, 15)},
        {makeVersion(27, 0, 1), false, makeVersion(27, 0, 1)}, {makeVersion(27, 0, 2), true, makeVersion(27, 0, 2)},
        {makeVersion(31, 0, 0), true, makeVersion(31, 0, 0)},
    };
    for (const SHeaderCase& c : cases) {
        CBytes bytes = CBytes().text("ESS FILE").u32(c.written);
        if (c.hasEdition)
            bytes.i32(1);
        CThreeEntries entries;
        EXPECT_TRUE(entries.load(bytes + goodBlock(1)));
        EXPECT_EQ(entries.one.version, c.seen);
        EXPECT_EQ(entries.one.numbers.size(), 2u);
    }
}

TEST(SettingsFile, thatCannotBeCarriedWholeIsNoDamage)
{
    CThreeEntries entries;
    EXPECT_FALSE(entries.load(header + goodBlock(1) + settingsBlock(2, CBytes().i32(isUnsupported)) + goodBlock(4)));
    ASSERT_EQ(entries.messages.size(), 1u);
    EXPECT_EQ(std::get<0>(entries.messages[0]), int(eError));
    EXPECT_NE(entries.logText().find("a.ess: numbers of a later kind"), std::string::npos);
}

/// Answers with a state from the n-th question on.
class CAnswering : public IProgressController
{
public:
    CAnswering(unsigned char state, int from) : state(state), from(from) {}
    void startStep(int, const QString&, bool) override {}
    void tick(int) override {}
    void endStep() override {}
    void cancel() override {}
    unsigned char cancelState() override { return ++asked >= from ? state : static_cast<unsigned char>(eGoOn); }

    const unsigned char state;
    const int from;
    int asked = 0;
};

TEST(SettingsFile, listensToTheUser)
{
    const CBytes whole = header + goodBlock(1) + goodBlock(2);
    for (const int from : {1, 2, 3, 4}) { // two blocks, the end, and after the thread
        CThreeEntries entries;
        CAnswering cancels(eCancel, from);
        EXPECT_FALSE(entries.load(whole, &cancels)) << from;
        EXPECT_TRUE(from == 4 || entries.one.numbers.empty()) << from;
        EXPECT_EQ(entries.logText(), "") << "what the user asked for is no error";
    }
    CThreeEntries entries;
    CAnswering stops(eStopWithoutFailure, 2);
    EXPECT_TRUE(entries.load(whole, &stops));
    EXPECT_EQ(entries.one.numbers.size(), 2u);
    EXPECT_TRUE(entries.two.numbers.empty());
    EXPECT_FALSE(entries.file.isDirty());
}

TEST(SettingsFile, isWrittenByteForByte)
{
    CThreeEntries entries;
    entries.one.numbers = {10, 11};
    entries.two.numbers = {20, 21};
    entries.four.numbers = {40, 41};
    const CBytes head = CBytes().text("ESS FILE").u32(0x1E0014).i32(0);
    EXPECT_TRUE(entries.save());
    EXPECT_EQ(CBytes(entries.folder.read("b.ess")), head + goodBlock(1) + goodBlock(2) + goodBlock(4));
    EXPECT_TRUE(entries.save(true, false));
    EXPECT_EQ(CBytes(entries.folder.read("b.ess")), head + goodBlock(1) + goodBlock(2));
    EXPECT_EQ(entries.logText(), "");
}

TEST(SettingsFile, isWrittenWhenThereIsAReason)
{
    CThreeEntries entries;
    EXPECT_TRUE(entries.save(false)) << "new settings are dirty";
    EXPECT_TRUE(entries.save(false));
    EXPECT_EQ(entries.one.writes, 1);
    entries.two.setModified(true);
    EXPECT_TRUE(entries.save(false));
    EXPECT_TRUE(entries.save(false));
    EXPECT_EQ(entries.one.writes, 2);

    entries.load(header + CBytes::garbage(20) + goodBlock(1));
    EXPECT_TRUE(entries.save(false)) << "the damage goes with the next save";
    EXPECT_EQ(entries.one.writes, 3);
}

TEST(SettingsFile, endsTheLifeOfItsOldCompanion)
{
    CThreeEntries entries;
    entries.folder.write("b.ppf", "old");
    entries.folder.write("c.ppf", "another deck's");
    EXPECT_TRUE(entries.save());
    EXPECT_FALSE(entries.folder.has("b.ppf"));
    EXPECT_TRUE(entries.folder.has("c.ppf"));

    entries.folder.write("b.ppf/inside", "a folder can't be removed like a file");
    EXPECT_FALSE(entries.save());
    EXPECT_NE(entries.logText().find("b.ppf can't be removed"), std::string::npos);
}

TEST(SettingsFile, thatFailsLeavesTheOldFileAndSaysSo)
{
    CThreeEntries entries;
    entries.folder.write("b.ess", "old");
    entries.two.failsToWrite = true;
    EXPECT_FALSE(entries.save());
    EXPECT_EQ(entries.folder.read("b.ess"), "old");
    EXPECT_NE(entries.logText().find("b.ess, twos: Could not write settings entry"), std::string::npos);
    EXPECT_TRUE(entries.file.isDirty());
}

} // namespace
} // namespace NBrenmark
