#pragma once
// Progress that counts, and answers eGoOn until it is to cancel.

#include "core/progress.h"

#include <limits>

namespace NBrenmark {

class CCountingProgress : public IProgressController
{
public:
    static constexpr int never = std::numeric_limits<int>::max();

    /// \param cancelAtTick      cancels from so many ticks on
    /// \param cancelAtQuestion  cancels from this question on, counted from 0
    explicit CCountingProgress(int cancelAtTick = never, int cancelAtQuestion = never)
        : cancelAtTick(cancelAtTick), cancelAtQuestion(cancelAtQuestion)
    {}
    void startStep(int, const QString&, bool) override {}
    void tick(int count) override { ticks += count; }
    void endStep() override {}
    void cancel() override {}
    unsigned char cancelState() override
    {
        return questions++ >= cancelAtQuestion || ticks >= cancelAtTick ? eCancel : eGoOn;
    }

    int ticks = 0;

private:
    int cancelAtTick;
    int cancelAtQuestion;
    int questions = 0;
};

} // namespace NBrenmark
