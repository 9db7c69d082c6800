#pragma once
// What chunks share on their way into a file and out of it: each is made or unmade by a task of its own, and they are
// waited for in their order.

#include "core/thread_pool.h"

#include <algorithm>
#include <cstddef>
#include <deque>
#include <memory>

namespace NBrenmark {

/// A chunk of fewer bytes is done in the time that another thread needs to hear of it.
constexpr std::size_t leastSharedChunk = 0x4000;

/// Waits for the task of a chunk, if it has one. Another thread may just be at it: to wait for that one would leave the
/// later ones to it as well.
template <class TChunk>
void finishTask(TChunk& chunk, const std::deque<std::unique_ptr<TChunk>>& later)
{
    if (!chunk.task)
        return;
    const auto isDoneHere = [](const std::unique_ptr<TChunk>& next) { return next->task && next->task->runHere(); };
    while (!chunk.task->runHere() && !chunk.task->isDone() && std::any_of(later.begin(), later.end(), isDoneHere)) {
    }
    chunk.task->wait();
}

} // namespace NBrenmark
