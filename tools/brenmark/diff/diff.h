#pragma once
// Two decks held against each other, whatever family each is of.

#include "brenmark/exit_codes.h"
#include "brenmark/tolerance.h"

#include <QString>

namespace NBrenmark {

struct SDiffOptions
{
    QString first;
    QString second;
    STolerances tolerances;
    unsigned int limit = 0; ///< differences that are named; 0 for all
    bool isBrief = false;   ///< only whether they differ
    bool json = false;
};

/// The exit statuses are those of the tools of that name: 0 the same, 1 different, 2 trouble.
EExitCode runDiff(const SDiffOptions& options);

} // namespace NBrenmark
