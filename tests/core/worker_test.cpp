// Workers: which threads they get, and that nothing of them is lost.
#include "core/worker.h"

#include <gtest/gtest.h>

#include <functional>
#include <set>

namespace NBrenmark {

namespace {

class CNotingWorker : public CWorker
{
public:
    explicit CNotingWorker(std::function<void()> work = [] {}) : work(std::move(work)) { startOrRun(); }
    ~CNotingWorker() override { wait(); }
    std::thread::id thread;

protected:
    void run() override
    {
        thread = std::this_thread::get_id();
        work();
    }

private:
    const std::function<void()> work;
};

} // namespace

TEST(Worker, runsOnTheKeptThreadUnlessThatIsBusy)
{
    const CKeptThread kept;
    std::set<std::thread::id> threads{std::this_thread::get_id()};
    for (int i = 0; i < 1000; ++i) { // as soon as one is done the next one is begun
        CNotingWorker worker;
        worker.wait();
        threads.insert(worker.thread);
    }
    EXPECT_EQ(threads.size(), 2u);
    std::thread::id inner;
    CNotingWorker outer([&] { // of another maker
        CNotingWorker worker;
        worker.wait();
        inner = worker.thread;
    });
    CNotingWorker beside;
    beside.wait();
    outer.wait();
    EXPECT_EQ(threads.count(outer.thread), 1u);
    EXPECT_EQ(threads.count(inner), 0u);
    EXPECT_NE(beside.thread, std::thread::id());
}

} // namespace NBrenmark
