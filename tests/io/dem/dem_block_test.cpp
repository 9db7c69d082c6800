// Blocks, markers and the stream below them.
#include "io/dem/dem_block.h"

#include "core/stop_flag.h"
#include "io/dem/dem_testing.h"
#include "support/log_capture.h"

#include <gtest/gtest.h>

namespace NBrenmark {

/// What the call throws, or nothing.
template <class TCall>
static std::string thrownBy(TCall&& call)
{
    try {
        call();
    }
    catch (const std::exception& error) {
        return error.what();
    }
    return "nothing";
}

TEST(DemBlock, writesItsSizeAtBothEnds)
{
    CByteStream target;
    CDemBlock outer(target.stream, 3, true);
    target.stream << quint32(7);
    CDemBlock inner(target.stream, 2, true);
    inner.close();
    target.stream << quint32(8);
    outer.close();
    target.stream << quint32(9);
    // By hand: an empty block takes 16 bytes, so the outer one holds 4 + 16 + 4.
    const CBytes expected = CBytes().u32(3).u32(24).u32(7).u32(2).u32(0).u32(0).u32(2).u32(8).u32(24).u32(3).u32(9);
    EXPECT_EQ(target.written(), expected);
}

struct SBlockCase
{
    const char* what;
    CBytes bytes;
    std::string message;
};

TEST(DemBlock, reportsWhatDoesntFrame)
{
    const SBlockCase cases[] = {
        {"another tag at the head", CBytes().u32(4).u32(0).u32(0).u32(4),
         "Invalid marker found in data stream loading expected tag=3 at pos=4."},
        {"another tag at the tail", CBytes().u32(3).u32(0).u32(0).u32(4),
         "Invalid marker found in data stream loading expected tag=3 at pos=16."},
        {"another size at the tail", CBytes().u32(3).u32(0).u32(1).u32(3),
         "Invalid size found in data stream loading expected tag=3 at pos=12."},
        {"cut in the tag", CBytes().u32(3).first(3),
         "Invalid marker found in data stream loading expected tag=3 at pos=3."},
        {"cut in the size", CBytes().u32(3).i8(0), "byte 5: size of a block ended early"},
        {"a size beyond the end", CBytes().u32(3).u32(0xFFFFFFF0u).u32(0).u32(3),
         "byte 8: block with tag 3 announced (4294967288 bytes), 8 bytes follow"},
        {"as it should be", CBytes().u32(3).u32(0).u32(0).u32(3), "nothing"},
    };
    for (const SBlockCase& c : cases) {
        CByteStream source(c.bytes);
        EXPECT_EQ(thrownBy([&] {
                      CDemBlock block(source.stream, 3, false);
                      block.close();
                  }),
                  c.message)
            << c.what;
    }
}

TEST(DemBlock, skipsToItsTrailerButNotWhenSaving)
{
    CByteStream source(CBytes().block(1, CBytes().f64s({1.0, 2.0, 3.0})).u32(77));
    CDemBlock block(source.stream, 1, false);
    double first = 0.0;
    source.stream >> first;
    block.skip();
    block.close();
    quint32 after = 0;
    source.stream >> after;
    EXPECT_EQ(after, 77u);

    CByteStream target;
    CDemBlock written(target.stream, 1, true);
    EXPECT_EQ(thrownBy([&] { written.skip(); }),
              "Attempt to use skip during save data saving expected tag=1 at pos=8.");
}

TEST(DemForm, recoversFromADamagedBlockAndSaysSo)
{
    const CLogCapture log;
    CByteStream source(CBytes().block(1, CBytes().i32(0x7FFFFFFF)).u32(77));
    SDataPlace place;
    place.file = "some.dem";
    const CPlaceScope scope(place.inTimestep(4));
    CInForm f(source.stream);
    f.block(1, "collisions", [&] { f.count("collision", 1); });
    quint32 after = 0;
    f.i32(after);
    EXPECT_EQ(after, 77u);
    // 4 of the block's bytes are read, none follow within it.
    EXPECT_EQ(log.text(),
              "WARNING Legacy read: some.dem, timestep 4: collisions skipped: byte 12: 2147483647 collisions "
              "announced (2147483647 bytes), 0 bytes follow\n");
}

TEST(DemForm, neverRecoversFromWhatIsNoDamageNorFromAStop)
{
    const CBytes bytes = CBytes().block(1, CBytes());
    CByteStream source(bytes);
    CInForm f(source.stream);
    EXPECT_THROW(f.block(1, "rows", [] { throw caused_error(eCauseUnsupported, "12 rows"); }), caused_error);
    CByteStream again(bytes);
    CInForm g(again.stream);
    EXPECT_THROW(g.block(1, "rows", [] { throw CReadStopped(); }), CReadStopped);
    EXPECT_NO_THROW(again.stream.require(8, "trailer")) << "what follows the rows is within reach again";
}

TEST(DemForm, takesNoMemoryForATextThatIsNotThere)
{
    struct STextCase
    {
        CBytes bytes;
        std::string message;
    };
    const STextCase cases[] = {
        {CBytes().u32(0x7FFFFFFE).ascii("ab"), "byte 4: text announced (2147483646 bytes), 2 bytes follow"},
        {CBytes().u32(3).ascii("abc"), "byte 4: text of an odd number of bytes"},
        {CBytes().ascii("ab"), "byte 2: length of a text ended early"},
    };
    for (const STextCase& c : cases) {
        CByteStream source(c.bytes);
        QString text;
        EXPECT_EQ(thrownBy([&] { CInForm(source.stream).text(text); }), c.message);
    }
}

TEST(DemForm, readsTextsAsTheyAre)
{
    for (const QString& text : {QString(), QString(""), QString("Größe\U0001F600\nb")}) {
        CByteStream source(CBytes().text(text));
        QString found = "before";
        CInForm(source.stream).text(found);
        EXPECT_EQ(found, text);
        EXPECT_EQ(found.isNull(), text.isNull());
    }
}

TEST(DemGate, holdsInItsRangesAndNowhereElse)
{
    const SGate gate = from(13, 0, 1).below(20, 0, 0).andFrom(20, 0, 16).upTo(26, 0, 0);
    struct SGateCase
    {
        quint32 version;
        bool holds;
    };
    const SGateCase cases[] = {
        {makeVersion(13, 0, 0), false}, {makeVersion(13, 0, 1), true},   {makeVersion(19, 255, 255), true},
        {makeVersion(20, 0, 0), false}, {makeVersion(20, 0, 15), false}, {makeVersion(20, 0, 16), true},
        {makeVersion(26, 0, 0), true},  {makeVersion(26, 0, 1), false},  {makeVersion(30, 0, 20), false},
    };
    for (const SGateCase& c : cases)
        EXPECT_EQ(gate.holds(c.version), c.holds) << versionText(c.version).toStdString();
    EXPECT_TRUE(always.holds(0) && always.holds(makeVersion(255, 0, 0)));
}

} // namespace NBrenmark
