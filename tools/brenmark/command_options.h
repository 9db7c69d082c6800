#pragma once
// The commands, their options, and where those are stored. The options of each are defined in command_options.cpp; what
// can't be understood is refused in command_line.cpp.

#include "brenmark/archive/archive_line.h"
#include "brenmark/commands.h"
#include "brenmark/diff/diff.h"

#include <CLI/CLI.hpp>

#include <functional>
#include <string>
#include <vector>

namespace NBrenmark {

class CCommandLine
{
public:
    CCommandLine();

    EExitCode run(int argumentCount, char** arguments);

private:
    /// A command with what every command takes.
    CLI::App* add(const char* name, const char* what);
    void addConvert();
    EExitCode runArchiveLine();
    void addCheck();
    void addInfo();
    void addConfig();
    void addDump();
    void addVerify();
    void addDiff();
    void addLaw();
    void addValues();
    void addXml();
    void addPlugins();
    void chooseXml();
    void addView();
    void addExport();
    void addPlot();
    void addSnapshot();
    void addCompletion();
    /// What the commands take that read timesteps.
    void addReading(CLI::App* command);
    void addThreads(CLI::App* command);
    void addProgress(CLI::App* command);

    EExitCode showHelp(const std::vector<std::string>& about);
    std::vector<std::string> commandNames() const;
    /// Null for none.
    const CLI::App* commandOf(const std::string& word) const;
    [[noreturn]] void refuseCommand(const std::string& word) const;
    [[noreturn]] void refuse(const std::string& parseError, const CLI::App& command) const;
    /// What the parser lets through for the sake of -o.
    bool isConvertWrong() const;

    CLI::App app{"Moves stored particle simulations, decks, into the current file family.", "brenmark"};
    CLI::App* convertCommand = nullptr;
    std::function<EExitCode()> chosen;

    std::string source, target, key, timestep, limit, mostMemory, threads, overlaps, speed, states, csv, svg, output,
        intervals, action, digestFile, library, png, definitionAt;
    std::string colour = "auto", progress = "auto";
    std::vector<std::string> paths, pair, tolerances;
    SConvertOptions convert;
    CArchiveLine archiveLine;
    CArchiveCommands archiveCommands;
    SCheckOptions check;
    SInfoOptions info;
    SConfigOptions config;
    SDumpOptions dump;
    SVerifyOptions verify;
    SDiffOptions diff;
    SLawOptions law;
    SValuesOptions values;
    SXmlOptions xml;
    SPluginsOptions plugins;
    SViewOptions view;
    SExportOptions exported;
    SPlotOptions plot;
    SSnapshotOptions snapshot;
};

/// Arguments that the parser had no use for, without the mark after which a word is no option.
std::vector<std::string> extrasOf(const CLI::App& command);

} // namespace NBrenmark
