#pragma once
// Archives: many decks converted by one command, which goes on where it stopped.

#include "brenmark/deck_options.h"
#include "brenmark/exit_codes.h"

#include <QString>

#include <string>
#include <vector>

namespace NBrenmark {

struct SArchiveOptions : SDeckOptions
{
    std::vector<std::string> inputs; ///< decks, folders and wildcards, as they were named
    std::string folder;              ///< DIR, in which the tree of the decks is kept
    bool followLinks = false;        ///< to folders
    bool skipExisting = false;       ///< leaves decks out that are there, whole and of the same source
    bool retryFailed = false;        ///< a resumed run takes up what has failed as well
    bool dryRun = false;
    bool quiet = false;
    bool json = false;
    unsigned jobs = 0;    ///< decks at once; 0: one for each core
    unsigned threads = 0; ///< of each deck; 0: the cores shared out
    quint64 memory = 0;   ///< bytes that all of them may take together; 0: half of what is free
    quint32 shard = 0;    ///< from 1 on
    quint32 shards = 0;   ///< 0: all decks
    std::string page;     ///< file for the run as a page; empty for none
};

struct SReportOptions
{
    std::string folder;
    std::string page; ///< file for the report as a page; empty for none
    bool json = false;
};

struct SPlanOptions
{
    std::vector<std::string> inputs;
    std::string folder;
    bool followLinks = false;
    quint32 shards = 1;
};

/// The options that matter to what comes out, as they were given.
std::vector<std::string> optionWords(const SArchiveOptions& options);

/// Converts an archive. What one deck comes to is in the table at the end and stops no other.
/// \throws CFailure  nothing can be begun
EExitCode runArchive(const SArchiveOptions& options);
/// What the runs in a folder came to. The exit status is that of the run, 130 for one that isn't finished.
EExitCode runReport(const SReportOptions& options);
/// Writes a job list and scripts into DIR/brenmark-plan.
EExitCode runPlan(const SPlanOptions& options);

} // namespace NBrenmark
