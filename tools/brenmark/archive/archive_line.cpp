#include "brenmark/archive/archive_line.h"

#include "brenmark/argument_values.h"
#include "brenmark/commands.h"
#include "brenmark/failure.h"

#include "core/thread_pool.h"

#include <CLI/CLI.hpp>

#include <filesystem>

namespace NBrenmark {

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
    if (convert.verbose)
        throw CFailure(eExitUsage, "--verbose is for one deck", "The journal has what became of each deck.");
    options.inputs = inputs;
    options.folder = std::filesystem::absolute(nativeFrom(folder)).lexically_normal().string();
    while (options.folder.size() > 1 && options.folder.back() == '/')
        options.folder.pop_back();
    options.force = convert.force;
    options.resume = convert.resume || options.retryFailed;
    options.strict = convert.strict;
    options.verify = convert.verify;
    options.ignoreCompanions = convert.ignoreCompanions;
    options.digest = convert.digest;
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

} // namespace NBrenmark
