// Files whose parts contradict each other: what is stored decides, and the log says so.
#include "io/hdf5/hdf5_deck_testing.h"
#include "io/hdf5/hdf5_sample.h"
#include "support/h5_builder.h"
#include "support/samples.h"

#include <functional>

namespace NBrenmark {

using namespace NHdf5Testing;

struct SContradiction
{
    const char* what;
    std::function<void(const CTempFolder&)> make;
    bool isRead;
    const char* log; ///< part of it
};

static const char* const type = "/TimestepData/0.1/ParticleTypes/0";

static CH5Builder changed(const CTempFolder& folder) { return CH5Builder(folder.path("Kiste_data/0.h5"), false); }

static const SContradiction contradictions[] = {
    {"no particle announced, two there", [](const CTempFolder& f) { changed(f).count(type, "size", 0); }, true,
     "announces 0 particles and holds 2"},
    {"an id that is no whole number",
     [](const CTempFolder& f) {
         const double ids[] = {1.0, 1.5};
         changed(f).without(std::string(type) + "/ids").dataset(type, "ids", H5T_NATIVE_DOUBLE, {2}, ids);
     },
     false, "dataset \"ids\""},
    {"an id that is too great",
     [](const CTempFolder& f) {
         const qint64 ids[] = {1, qint64(1) << 40};
         changed(f).without(std::string(type) + "/ids").dataset(type, "ids", H5T_NATIVE_INT64, {2}, ids);
     },
     false, "dataset \"ids\""},
    {"a count that is no whole number", [](const CTempFolder& f) { changed(f).number(type, "size", 2.5); }, false,
     "isn't a whole number"},
    {"the file of another timestep",
     [](const CTempFolder& f) { f.write("Kiste_data/1.h5", f.read("Kiste_data/0.h5")); }, true,
     "the model in this file is number 0: it is the file of another timestep"},
    {"two timesteps of one time",
     [](const CTempFolder& f) {
         CH5Builder(f.path("Kiste_data/1.h5"), false).number("/TimestepData/0.2", "time", 0.1);
     },
     true, "Timesteps 0 and 1 have the same time."},
    {"another file among the timesteps", [](const CTempFolder& f) { f.write("Kiste_data/notes.h5", "none"); }, true,
     "notes.h5 isn't a timestep of this deck."},
    {"two blocks of one name",
     [](const CTempFolder&) {
         CHdf5Sample sample;
         CMaterialBlockMap blocks;
         fill(blocks);
         sample.write<CHdf5CreatorDataWriter>([&](auto& writer) { writer.writeMaterialBlocks(blocks); });
         sample.change().text("/MaterialBlocks/1", "name", "Bed");
         CMaterialBlockMap read;
         sample.read<CHdf5CreatorDataReader>(currentFileVersion(), [&](auto& r) { r.readMaterialBlocks(read); });
     },
     true, "Two material blocks are named \"Bed\": the later one stays."},
    {"two shares of one size",
     [](const CTempFolder&) {
         const double rows[] = {0.25, 30.0, 0.25, 100.0};
         const hid_t type = H5Tcreate(H5T_COMPOUND, 2 * sizeof(double));
         H5Tinsert(type, "first", 0, H5T_NATIVE_DOUBLE);
         H5Tinsert(type, "second", sizeof(double), H5T_NATIVE_DOUBLE);
         CHdf5Sample sample;
         CH5Builder(sample.path()).dataset("/", "data", type, {2}, rows);
         H5Tclose(type);
         CUserDefinedDistribution law;
         sample.read<CHdf5CreatorDataReader>(law);
     },
     true, "A size law has 2 bands of 1 sizes"},
};

TEST(Contradictions, areReportedAndNothingIsMadeUp)
{
    for (const SContradiction& c : contradictions) {
        const CTempFolder folder;
        makeDeck(folder.path("Kiste.dem"), {{0.1, "A"}, {0.2, "B"}});
        CLogCapture log;
        c.make(folder);
        CHdf5Deck deck;
        const bool isRead = deck.open(folder.path("Kiste.dem")) == eOpened && deck.read(0) && deck.read(1);
        EXPECT_EQ(isRead, c.isRead) << c.what << log.text();
        EXPECT_NE(log.text().find(c.log), std::string::npos) << c.what << '\n' << log.text();
        if (c.isRead) {
            ASSERT_TRUE(deck.read(0));
            EXPECT_EQ(deck.timestep().particleTypes.types[0]->slotCount(), 2u) << c.what;
        }
    }
}

} // namespace NBrenmark
