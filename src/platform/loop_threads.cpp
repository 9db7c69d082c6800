// By asking the system for threads before OpenMP does: its runtime ends the process where it gets none.
#include "platform/loop_threads.h"

#include <omp.h>

#include <chrono>
#include <exception>
#include <mutex>
#include <sys/stat.h>
#include <thread>
#include <vector>

namespace NBrenmark {

namespace {

unsigned long threadsOfProcess()
{
    struct stat status = {};
    return stat("/proc/self/task", &status) == 0 ? status.st_nlink : 0; // a link each, and two more
}

/// How many of so many threads can be there together.
int threadsToBeHad(int wanted)
{
    constexpr int longestWait = 100; // of 0.1 ms
    const unsigned long before = threadsOfProcess();
    std::vector<std::thread> threads;
    std::mutex untilAllAreThere;
    try {
        const std::lock_guard<std::mutex> lock(untilAllAreThere);
        threads.reserve(static_cast<std::size_t>(wanted));
        while (threads.size() < static_cast<std::size_t>(wanted))
            threads.emplace_back([&] { const std::lock_guard<std::mutex> passes(untilAllAreThere); });
    }
    catch (const std::exception&) { // these are all
    }
    for (std::thread& thread : threads)
        thread.join();
    // A thread that has been waited for counts for a moment longer where their number is limited.
    for (int waits = 0; threadsOfProcess() > before && waits < longestWait; ++waits)
        std::this_thread::sleep_for(std::chrono::microseconds(100));
    return static_cast<int>(threads.size());
}

} // namespace

int loopThreads(bool isWorthThem)
{
    if (!isWorthThem)
        return 1;
    static thread_local int threads = 0;
    if (threads == 0)
        threads = 1 + threadsToBeHad(omp_get_max_threads() - 1);
    return threads;
}

} // namespace NBrenmark
