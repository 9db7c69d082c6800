// Damaged files: a clean failure, or what is left of the timestep; never a crash, a hang or a torrent of memory.
#include "io/hdf5/hdf5_deck_testing.h"
#include "support/h5_builder.h"

#include <functional>
#include <random>
#include <sys/wait.h>
#include <unistd.h>

/// For the address sanitizer. HDF5 asks for what damaged sizes say, and copes with getting nothing.
// NOLINTNEXTLINE(bugprone-reserved-identifier): the name that its runtime looks for
extern "C" __attribute__((visibility("default"))) const char* __asan_default_options()
{
    return "allocator_may_return_null=1";
}

namespace NBrenmark {

using namespace NHdf5Testing;

// No codes that anybody else ends a process with, a sanitizer for one.
constexpr int readWhole = 40;
constexpr int failedCleanly = 41;

/// Runs body in a process of its own. This one starts no thread, also to write: a worker on its way out may hold
/// a lock, which a child that is made at that moment would wait for for ever.
/// \return what body gives, or the number of the signal that ended it, negative
static int apart(const std::function<int()>& body)
{
    const pid_t child = fork();
    if (child == 0) {
        alarm(20);
        _exit(body());
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

class DamagedFiles : public testing::Test
{
protected:
    DamagedFiles()
    {
        EXPECT_EQ(apart([this] {
                      CHdf5Deck writer;
                      fillCreator(writer.creator());
                      fillTimestep(writer.timestep(), 300);
                      const bool written = writer.manager->setOutputName(path()) == 0 && writer.append(0.1, true);
                      writer.manager->reset();
                      return written ? 0 : 1;
                  }),
                  0);
        whole = folder.read("Kiste_data/0.h5");
    }
    QString path() const { return folder.path("Kiste.dem"); }

    /// Opens and reads: a fault of HDF5 itself shows as one case. \return the exit code
    int outcomeOf(const QByteArray& bytes)
    {
        folder.write("Kiste_data/0.h5", bytes);
        return apart([this] {
            CHdf5Deck deck;
            return deck.open(path()) == eOpened && deck.read(0) ? readWhole : failedCleanly;
        });
    }

    CTempFolder folder;
    CLogCapture log;
    QByteArray whole;
};

TEST_F(DamagedFiles, thatAreCutFailCleanly)
{
    ASSERT_EQ(outcomeOf(whole), readWhole);
    for (int length = 0; length < whole.size(); length += 1 + whole.size() / 60)
        EXPECT_EQ(outcomeOf(whole.left(length)), failedCleanly) << length << " of " << whole.size() << " bytes";
}

TEST_F(DamagedFiles, ofRandomBytesFailOrAreRead)
{
    std::mt19937 random(20260101);
    for (int round = 0; round < 150; ++round) {
        QByteArray bytes = whole;
        for (int i = 0; i < 1 + round % 8; ++i)
            bytes[static_cast<int>(random() % static_cast<unsigned>(bytes.size()))] = static_cast<char>(random());
        const int outcome = outcomeOf(bytes);
        EXPECT_TRUE(outcome == readWhole || outcome == failedCleanly) << "round " << round << ": " << outcome;
    }
}

TEST_F(DamagedFiles, bringNeitherTheBytesOfOtherFilesNorFilters)
{
    const QByteArray secret(300 * 24, 's');
    folder.write("secret", secret);
    const std::string other = folder.path("secret").toStdString();
    const std::string deckFile = folder.path("Kiste_data/0.h5").toStdString();
    const char* const array = "/TimestepData/0.1/ParticleTypes/0/position";
    const hsize_t extent[] = {300, 3}; // of the positions that fillTimestep gives
    const auto storedWith = [&](const std::function<void(hid_t)>& set) {
        const hid_t properties = H5Pcreate(H5P_DATASET_CREATE);
        set(properties);
        CH5Builder(folder.path("Kiste_data/0.h5"), false)
            .without(array)
            .dataset("/TimestepData/0.1/ParticleTypes/0", "position", H5T_NATIVE_DOUBLE, {300, 3}, nullptr, properties);
        H5Pclose(properties);
    };
    const auto linked = [&](const char* path, const std::function<void(hid_t)>& link) {
        CH5Builder(folder.path("Kiste_data/0.h5"), false).without(path);
        const hid_t file = H5Fopen(deckFile.c_str(), H5F_ACC_RDWR, H5P_DEFAULT);
        link(file);
        H5Fclose(file);
    };
    folder.write("twin.h5", whole);
    const std::string twin = folder.path("twin.h5").toStdString();
    const std::pair<const char*, std::function<void()>> cases[] = {
        {"storage in another file", [&] { storedWith([&](hid_t p) { H5Pset_external(p, other.c_str(), 0, 7200); }); }},
        {"a virtual dataset",
         [&] {
             storedWith([&](hid_t p) {
                 const hid_t space = H5Screate_simple(2, extent, nullptr);
                 H5Pset_virtual(p, space, twin.c_str(), array, space);
                 H5Sclose(space);
             });
         }},
        {"a link to a dataset of another file",
         [&] {
             linked(array,
                    [&](hid_t f) { H5Lcreate_external(twin.c_str(), array, f, array, H5P_DEFAULT, H5P_DEFAULT); });
         }},
        {"a link to a group of another file",
         [&] {
             linked("/TimestepData/0.1", [&](hid_t f) {
                 H5Lcreate_external(twin.c_str(), "/TimestepData/0.1", f, "/TimestepData/0.1", H5P_DEFAULT,
                                    H5P_DEFAULT);
             });
         }},
        {"a soft link",
         [&] { linked(array, [&](hid_t f) { H5Lcreate_soft("/TimestepData", f, array, H5P_DEFAULT, H5P_DEFAULT); }); }},
        {"a filter of somebody else",
         [&] {
             storedWith([&](hid_t p) {
                 H5Pset_chunk(p, 2, extent);
                 H5Pset_filter(p, 32015, H5Z_FLAG_OPTIONAL, 0, nullptr);
             });
         }},
    };
    for (const auto& [what, change] : cases) {
        folder.write("Kiste_data/0.h5", whole);
        ASSERT_EQ(apart([&, change = change] {
                      change();
                      CLogCapture heard;
                      CHdf5Deck deck;
                      if (deck.open(path()) == eOpened && deck.read(0))
                          return readWhole;
                      const std::string text = heard.text();
                      const bool named = text.find("isn't followed") != std::string::npos ||
                                         text.find("needs the filter 32015") != std::string::npos;
                      return named ? failedCleanly : 1;
                  }),
                  failedCleanly)
            << what;
    }
}

} // namespace NBrenmark
