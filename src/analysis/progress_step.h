#pragma once
// A step of a progress controller, which ends however it is left.

#include "core/progress.h"

namespace NBrenmark {

class CProgressStep
{
public:
    /// \param progress  not owned; may be null
    CProgressStep(IProgressController* progress, int ticks, const QString& text) : progress(progress)
    {
        if (progress)
            progress->startStep(ticks, text, true);
    }
    ~CProgressStep()
    {
        if (progress)
            progress->endStep();
    }
    CProgressStep(const CProgressStep&) = delete;
    CProgressStep& operator=(const CProgressStep&) = delete;

    bool isCancelled() const { return wantsCancel(progress); }
    void tick()
    {
        if (progress)
            progress->tick(1);
    }

private:
    IProgressController* const progress;
};

} // namespace NBrenmark
