#pragma once
// What the command line ends with. Scripts rely on these numbers: they are in the man page.

namespace NBrenmark {

enum EExitCode : int
{
    eExitDone = 0,
    eExitDifferent = 1,    ///< verify found a difference, or a conversion failed for another reason
    eExitUsage = 2,        ///< the command can't be understood
    eExitSource = 3,       ///< the source is missing or damaged
    eExitTarget = 4,       ///< the target can't be written, or another input or output error
    eExitUnsupported = 5,  ///< not a deck of a family and version that is known
    eExitNothingMade = 6,  ///< convert had nothing to convert, and what OUT names isn't there
    eExitInterrupted = 130 ///< as shells number the end by SIGINT
};

} // namespace NBrenmark
