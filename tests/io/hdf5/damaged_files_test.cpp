// Damaged files: a clean failure, or what is left of the timestep; never a crash, a hang or a torrent of memory.
#include "io/hdf5/hdf5_deck_testing.h"

#include <functional>
#include <random>
#include <sys/wait.h>
#include <unistd.h>

/// For the address sanitizer. HDF5 asks for what damaged sizes say, and copes with getting nothing.
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

} // namespace NBrenmark
