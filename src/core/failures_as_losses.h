#pragma once
// For what may be left out where it can't be read: the reader reports as it always does, and its caller, who knows that
// the work goes on without it, has that counted among the losses.

namespace NBrenmark {

/// While one lives, a failure of this thread that the source or its version is to blame for is reported as a loss.
class CFailuresAsLosses
{
public:
    CFailuresAsLosses();
    ~CFailuresAsLosses();
    CFailuresAsLosses(const CFailuresAsLosses&) = delete;
    CFailuresAsLosses& operator=(const CFailuresAsLosses&) = delete;

    bool lastWasLoss = false; ///< of the failures since this began the last one; false without any

private:
    CFailuresAsLosses* const before;
};

} // namespace NBrenmark
