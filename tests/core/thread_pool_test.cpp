// Work in pieces: the pool, the blocks that it deflates, and how many threads it has.
#include "core/deflate.h"
#include "core/inflate.h"
#include "core/thread_pool.h"
#include "platform/core_count.h"

#include "support/temp_folder.h"
#include <zlib.h>
#include <gtest/gtest.h>
#include <numeric>
#include <random>
#include <set>

namespace NBrenmark {

TEST(ThreadPool, doesEveryTaskOnceAndHandsOverWhatItThrows)
{
    for (const unsigned threads : {1u, 2u, 5u}) {
        const CThreadPool pool(threads);
        EXPECT_EQ(CThreadPool::current() == &pool, threads > 1);
        std::vector<std::atomic<int>> runs(200);
        std::vector<std::unique_ptr<CPooledTask>> tasks;
        for (size_t i = 0; i < runs.size(); ++i)
            tasks.push_back(std::make_unique<CPooledTask>([&runs, i] {
                ++runs[i];
                if (i % 7 == 0)
                    throw std::out_of_range(std::to_string(i));
            }));
        tasks.resize(150); // whoever isn't waited for is done or never begun
        for (size_t i = 0; i < tasks.size(); ++i) {
            if (i % 7 == 0)
                EXPECT_THROW(tasks[i]->wait(), std::out_of_range);
            else
                tasks[i]->wait();
        }
        tasks.clear();
        for (size_t i = 0; i < runs.size(); ++i)
            EXPECT_LE(runs[i], 1) << i;
        EXPECT_EQ(std::accumulate(runs.begin(), runs.begin() + 150, 0), 150);
    }
    EXPECT_EQ(CThreadPool::current(), nullptr);
}

/// Bytes of several kinds: constants, counted numbers, rough ones, a mixture.
static std::string block(int kind, size_t bytes)
{
    std::mt19937_64 random(7);
    std::string made;
    for (quint64 i = 0; made.size() < bytes; ++i) {
        const quint64 value = kind == 0 ? 3 : kind == 1 ? i / 2 : kind == 2 ? random() : (i % 3 ? random() : 0);
        made.append(reinterpret_cast<const char*>(&value), sizeof value);
    }
    return made.substr(0, bytes);
}

static std::string inflatedByZlib(const SBytes& stream, size_t bytes)
{
    std::string back(bytes + 1, ' ');
    uLongf length = back.size();
    EXPECT_EQ(uncompress(reinterpret_cast<Bytef*>(&back[0]), &length, reinterpret_cast<const Bytef*>(stream.data.get()),
                         stream.size),
              Z_OK);
    return back.substr(0, length);
}

TEST(Deflate, givesStreamsThatZlibInflatesAndThatAreHardlyLonger)
{
    for (int kind = 0; kind < 4; ++kind)
        for (const size_t bytes : {size_t(0), size_t(1), size_t(100), size_t(5000), size_t(2000000)}) {
            const std::string raw = block(kind, bytes);
            const SBytes stream = deflated(raw.data(), bytes), quick = quicklyDeflated(raw.data(), bytes);
            EXPECT_EQ(inflatedByZlib(stream, bytes), raw);
            EXPECT_EQ(inflatedByZlib(quick, bytes), raw);
            std::vector<Bytef> ordinary(compressBound(bytes));
            uLongf size = ordinary.size();
            compress2(ordinary.data(), &size, reinterpret_cast<const Bytef*>(raw.data()), bytes, 6);
            EXPECT_LE(stream.size, size + size / 20 + 100) << kind << ' ' << bytes;
            EXPECT_LE(quick.size, std::min(size * 2 + bytes / 100, bytes + bytes / 1024) + 100) << kind << ' ' << bytes;
        }
}

/// A block that shrinks by a twentieth: the quick encoder's work is taken.
static std::string quickBlock()
{
    std::string raw = block(2, 40000);
    for (size_t i = 0; i < raw.size(); i += 8)
        raw[i] &= 15;
    return raw;
}

/// Leaves numbers on the stack where the next function has its variables.
__attribute__((noinline)) void soilStack(quint16 number)
{
    volatile quint16 leftOver[100000];
    for (volatile quint16& one : leftOver)
        one = number;
}

TEST(Deflate, givesTheSameBytesWhateverMemoryHeldBefore)
{
    for (const std::string& raw : {block(1, 1000), quickBlock(), block(3, 300000)}) {
        std::set<std::string> streams;
        for (quint16 number = 0; number < 20; ++number) {
            soilStack(number);
            const SBytes stream = deflated(raw.data(), raw.size());
            streams.insert(std::string(stream.data.get(), stream.size));
        }
        EXPECT_EQ(streams.size(), 1u) << raw.size();
    }
}

/// What is made of a block by a thread whose stack is given.
static std::string deflatedOnStack(char* stack, size_t stackSize, const std::string& raw)
{
    struct SWork
    {
        const std::string& raw;
        SBytes stream;
    } work{raw, {}};
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setstack(&attributes, stack, stackSize);
    pthread_t thread;
    const auto run = [](void* data) -> void* {
        auto& given = *static_cast<SWork*>(data);
        given.stream = deflated(given.raw.data(), given.raw.size());
        return nullptr;
    };
    EXPECT_EQ(pthread_create(&thread, &attributes, run, &work), 0);
    pthread_join(thread, nullptr);
    pthread_attr_destroy(&attributes);
    return std::string(work.stream.data.get(), work.stream.size);
}

// ISA-L takes bits 16 to 47 of its stream's address for the third position's numbers: a block that begins with them, and
// has them again later, is where that would be seen.
TEST(Deflate, givesTheSameBytesWhereverTheStackLies)
{
    constexpr size_t stackSize = 0x200000, page = 0x10000;
    std::vector<char> stack(stackSize + page);
    char* const bottom = stack.data() + page - reinterpret_cast<quintptr>(stack.data()) % page;
    for (size_t offset = stackSize - 8 * page; offset < stackSize; offset += page) {
        std::string raw = quickBlock();
        const auto number = static_cast<quint32>(reinterpret_cast<quintptr>(bottom + offset) >> 16);
        for (const size_t place : {0, 4000})
            raw.replace(place, sizeof number, reinterpret_cast<const char*>(&number), sizeof number);
        const SBytes stream = deflated(raw.data(), raw.size());
        EXPECT_TRUE(deflatedOnStack(bottom, stackSize, raw) == std::string(stream.data.get(), stream.size)) << offset;
    }
}

TEST(Inflate, takesPiecesOfAnySizeAndKnowsWhereTheStreamEnds)
{
    const std::string raw = block(3, 20000);
    const SBytes stream = deflated(raw.data(), raw.size());
    const std::string input = std::string(stream.data.get(), stream.size) + "what follows";
    for (const size_t piece : {size_t(1), size_t(777), input.size()})
        for (const size_t room : {size_t(1), size_t(1000), raw.size() + 1}) {
            CInflater inflater;
            std::string made;
            std::vector<char> target(room);
            size_t fed = 0;
            while (!inflater.hasEnded()) {
                if (inflater.isHungry() && fed < input.size()) {
                    const size_t size = std::min(piece, input.size() - fed);
                    inflater.feed(input.data() + fed, size);
                    fed += size;
                }
                made.append(target.data(), inflater.inflate(target.data(), room));
            }
            EXPECT_EQ(made, raw);
            EXPECT_EQ(fed - inflater.waiting(), stream.size) << piece << ' ' << room;
        }
}

TEST(CoreCount, keepsToTheLimitOfAControlGroupAndOfThoseAboveIt)
{
    const CTempFolder root;
    QDir(root.path()).mkpath("a/b");
    QDir(root.path()).mkpath("cpu,cpuacct/docker");
    root.write("a/cpu.max", "150000 100000\n"); // one core and a half
    root.write("a/b/cpu.max", "max 100000\n");
    root.write("cpu,cpuacct/docker/cpu.cfs_quota_us", "300000\n");
    root.write("cpu,cpuacct/docker/cpu.cfs_period_us", "100000\n");
    const auto cores = [&](const char* members) { return coresOfControlGroup(root.path().toStdString(), members); };
    EXPECT_EQ(cores("0::/a/b\n"), 2u);
    EXPECT_EQ(cores("4:memory:/x\n3:cpu,cpuacct:/docker\n"), 3u);
    EXPECT_EQ(cores("0::/\n"), 0u);
    EXPECT_EQ(cores("nonsense"), 0u);
    EXPECT_GE(availableCores(), 1u);
}

} // namespace NBrenmark
