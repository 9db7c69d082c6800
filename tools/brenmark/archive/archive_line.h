#pragma once
// The arguments of the commands for archives.

#include "brenmark/archive/archive.h"

#include <QString>

#include <functional>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace NBrenmark {

struct SConvertOptions;

/// The options of convert that make it a run over an archive.
class CArchiveLine
{
public:
    /// Adds them to the command.
    void addTo(CLI::App& command);
    /// Whether they were given: else IN and OUT are one deck.
    bool isGiven() const { return !folder.empty(); }
    /// The run that was asked for.
    /// \param convert   the options that both kinds share
    /// \param inputs    all positional arguments
    /// \param threads   of --threads; empty for none
    /// \throws CFailure
    EExitCode run(const SConvertOptions& convert, const std::vector<std::string>& inputs, const std::string& threads,
                  const std::string& maxMemory);
    /// \throws CFailure  one of them was given without -o
    void requireNone() const;

private:
    SArchiveOptions options;
    std::string folder, jobs, memory, shard;
};

/// The commands report and plan.
class CArchiveCommands
{
public:
    /// \param add     makes a command with what every command takes, by its name and what it does
    /// \param choose  takes what a command does if it was given
    void addTo(const std::function<CLI::App*(const char* name, const char* what)>& add,
               const std::function<void(std::function<EExitCode()>)>& choose);

private:
    SReportOptions report;
    SPlanOptions plan;
    std::string reportFolder, reportPage, planFolder, shards;
};

} // namespace NBrenmark
