// Streams that are found in a file before anybody asks for them.
#include "io/dem/inflate_ahead.h"

#include "support/temp_folder.h"
#include <gtest/gtest.h>
#include <random>

namespace NBrenmark {

/// Rough bytes, in which no stream begins but by chance.
static std::string rough(size_t bytes, unsigned seed)
{
    std::mt19937 random(seed);
    std::string made(bytes, '\0');
    for (char& byte : made)
        byte = static_cast<char>(random());
    return made;
}

static std::string streamOf(const std::string& raw)
{
    const SBytes stream = deflated(raw.data(), raw.size());
    return std::string(stream.data.get(), stream.size);
}

TEST(InflateAhead, findsWholeStreamsAtTheirPlacesAndNoOthers)
{
    const std::string first = rough(3000000, 1), second(700, 'x'), third = rough(5000, 2);
    std::string file = rough(100000, 3) + '\x78';
    const size_t firstPlace = file.size();
    file += streamOf(first);
    const size_t secondPlace = file.size(); // one right after the other
    file += streamOf(second) + rough(300, 4);
    const size_t damagedPlace = file.size();
    std::string damaged = streamOf(third);
    damaged[damaged.size() - 1] ^= 1; // of the checksum
    file += damaged;
    const size_t thirdPlace = file.size();
    file += streamOf(third);
    const size_t cutPlace = file.size();
    file += streamOf(third).substr(0, 4000);
    const CTempFolder folder;
    folder.write("file", QByteArray::fromStdString(file));

    const auto found = [&](CInflateAhead& ahead, size_t place) {
        const auto group = ahead.takeGroup(static_cast<qint64>(place));
        std::string bytes(4000000, '\0');
        if (group)
            bytes.resize(group->take(&bytes[0], bytes.size()));
        return group ? bytes : "none";
    };
    for (const unsigned threads : {1u, 3u}) {
        const CThreadPool pool(threads);
        CInflateAhead ahead(folder.path("file").toStdString(), 0, file.size(), 100000000);
        EXPECT_EQ(found(ahead, 50000), "none");
        EXPECT_TRUE(found(ahead, firstPlace) == first);
        EXPECT_EQ(found(ahead, secondPlace), second);
        EXPECT_EQ(found(ahead, damagedPlace), "none");
        EXPECT_TRUE(found(ahead, thirdPlace) == third);
        EXPECT_EQ(found(ahead, cutPlace), "none");
        CInflateAhead poor(folder.path("file").toStdString(), 0, file.size(), 2000000); // for less than the first
        EXPECT_EQ(found(poor, firstPlace), "none");
    }
}

} // namespace NBrenmark
