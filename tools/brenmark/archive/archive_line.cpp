#include "brenmark/archive/archive_line.h"

#include "brenmark/argument_values.h"
#include "brenmark/commands.h"
#include "brenmark/failure.h"

#include "core/thread_pool.h"

#include <CLI/CLI.hpp>

#include <filesystem>

namespace NBrenmark {

/// Absolute, without a slash at its end.
static std::string folderFrom(const std::string& argument)
{
    std::string folder = std::filesystem::absolute(nativeFrom(argument)).lexically_normal().string();
    while (folder.size() > 1 && folder.back() == '/')
        folder.pop_back();
    return folder;
}

void CArchiveLine::addTo(CLI::App& command)
{
    command.add_option("-o,--output", folder, "Convert all IN, decks, folders and wildcards, into this folder")
        ->type_name("DIR");
    command.add_option("-j,--jobs", jobs, "With -o, so many decks at once; default: one for each core")->type_name("N");
    command.add_option("--memory", memory, "With -o, memory for all decks together, for example 16GB")
        ->type_name("SIZE");
    command.add_flag("--skip-existing", options.skipExisting,
                     "With -o, leave out decks that are there, whole and of the same source");
    command.add_flag("--retry-failed", options.retryFailed, "With -o, --resume, and try again what has failed");
    command.add_flag("--follow-links", options.followLinks, "With -o, follow symbolic links to folders");
    command.add_option("--shard", shard, "With -o, the I-th of N shares of the decks alone")->type_name("I/N");
}

void CArchiveLine::requireNone() const
{
    const bool any = options.skipExisting || options.retryFailed || options.followLinks || !jobs.empty() ||
                     !memory.empty() || !shard.empty();
    if (any)
        throw CFailure(eExitUsage,
                       "-j, --memory, --skip-existing, --retry-failed, --follow-links and --shard need -o DIR",
                       "For example: brenmark convert archive -o new -j 4");
}

EExitCode CArchiveLine::run(const SConvertOptions& convert, const std::vector<std::string>& inputs,
                            const std::string& threads, const std::string& maxMemory)
{
    if (!maxMemory.empty())
        throw CFailure(eExitUsage, "--max-memory is for one deck", "Give --memory for all decks together.");
    if (convert.xdmf)
        throw CFailure(eExitUsage, "--xdmf is for one deck", "Use brenmark view on each new deck.");
    if (convert.verbose)
        throw CFailure(eExitUsage, "--verbose is for one deck", "The journal has what became of each deck.");
    options.inputs = inputs;
    options.folder = folderFrom(folder);
    static_cast<SDeckOptions&>(options) = static_cast<const SDeckOptions&>(convert);
    options.resume = convert.resume || options.retryFailed;
    options.dryRun = convert.dryRun;
    options.quiet = convert.quiet;
    options.json = convert.json;
    options.page = convert.page;
    if (!jobs.empty())
        options.jobs = countFrom("-j", jobs);
    if (!threads.empty())
        options.threads = threadsChosen(threads);
    if (!memory.empty())
        options.memory = sizeFrom("--memory", memory);
    if (!shard.empty())
        std::tie(options.shard, options.shards) = shardFrom("--shard", shard);
    setThreadCount(0); // --threads is for each deck, and the decks go by the cores
    return runArchive(options);
}

void CArchiveCommands::addTo(const std::function<CLI::App*(const char*, const char*)>& add,
                             const std::function<void(std::function<EExitCode()>)>& choose)
{
    CLI::App* const ofReport = add("report", "Show what a run over many decks came to, from its journal");
    ofReport->add_option("DIR", reportFolder, "The folder that was given as -o DIR")->required();
    ofReport->add_flag("--json", report.json, "Show one JSON object");
    ofReport->add_option("--html", reportPage, "Write it as a page as well")->type_name("FILE");
    ofReport->callback([this, choose] {
        choose([this] {
            report.folder = folderFrom(reportFolder);
            report.page = reportPage.empty() ? std::string() : nativeFrom(reportPage);
            return runReport(report);
        });
    });

    CLI::App* const ofPlan = add("plan", "Share many decks out among the jobs of a cluster");
    ofPlan->add_option("IN", plan.inputs, "Decks, folders and wildcards")
        ->required()
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    ofPlan->add_option("-o,--output", planFolder, "The folder into which they are to be converted")
        ->type_name("DIR")
        ->required();
    ofPlan->add_option("--shards", shards, "How many shares there are to be")->type_name("N")->required();
    ofPlan->add_flag("--follow-links", plan.followLinks, "Follow symbolic links to folders");
    ofPlan->callback([this, choose] {
        choose([this] {
            plan.folder = folderFrom(planFolder);
            plan.shards = countFrom("--shards", shards);
            return runPlan(plan);
        });
    });
}

} // namespace NBrenmark
