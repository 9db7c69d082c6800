// brenmark plan: shares of an archive for a cluster, with the scripts that start them.

#include "brenmark/archive/archive.h"
#include "brenmark/archive/shares.h"
#include "brenmark/disk.h"
#include "brenmark/failure.h"
#include "brenmark/target_checks.h"
#include "brenmark/terminal.h"
#include "brenmark/units_text.h"

#include <QFile>

#include <algorithm>
#include <filesystem>

namespace NBrenmark {

/// What all shares run, but for the number of the share. Wildcards are in quotes: each share looks for itself.
static std::string shareCommand(const SPlanOptions& options, const std::string& share)
{
    std::string command = "brenmark convert";
    for (const std::string& input : options.inputs)
        command += ' ' + shellQuoted(std::filesystem::absolute(input).lexically_normal().string());
    return command + " -o " + shellQuoted(options.folder) + (options.followLinks ? " --follow-links" : "") +
           " --resume --shard " + share + '/' + std::to_string(options.shards);
}

static std::string slurmScript(const SPlanOptions& options)
{
    return "#!/bin/bash\n"
           "# Converts share $SLURM_ARRAY_TASK_ID. Submit it once more after a failure: it goes on where it stopped.\n"
           "# Exit status: 0 all well, 1 some decks failed, 3 some were converted with losses.\n"
           "#SBATCH --job-name=brenmark\n"
           "#SBATCH --array=1-" +
           std::to_string(options.shards) +
           "\n"
           "#SBATCH --cpus-per-task=4\n"
           "#SBATCH --requeue\n"
           "exec " +
           shareCommand(options, "\"$SLURM_ARRAY_TASK_ID\"") + " -j \"${SLURM_CPUS_PER_TASK:-1}\" --quiet\n";
}

static std::string parallelScript(const SPlanOptions& options)
{
    return "#!/bin/sh\n"
           "# One share after the other on each machine of GNU parallel's list: add --sshloginfile FILE for several.\n"
           "seq " +
           std::to_string(options.shards) + " | parallel --jobs 1 " +
           shellQuoted(shareCommand(options, "{}") + " --quiet") + '\n';
}

static std::string snakefile(const SPlanOptions& options)
{
    const std::string count = std::to_string(options.shards);
    const std::string doubled = [&] { // of braces, which are wildcards there
        std::string text;
        for (const char c : shareCommand(options, "SHARE"))
            text += c == '{' || c == '}' ? std::string(2, c) : std::string(1, c);
        return text;
    }();
    const size_t at = doubled.rfind("SHARE");
    return "# snakemake --cores 8 --keep-going --snakefile Snakefile\n"
           "# A share with a deck that fails ends with 1 and stops no other; 3, converted with losses, is no failure.\n"
           "rule all:\n"
           "    input: expand(\"share-{share}.done\", share=range(1, " +
           count +
           " + 1))\n\n"
           "rule share:\n"
           "    output: touch(\"share-{share}.done\")\n"
           "    threads: 4\n"
           "    shell: r\"\"\"" +
           doubled.substr(0, at) + "{wildcards.share}" + doubled.substr(at + 5) +
           " -j {threads} --quiet || [ $? -eq 3 ]\"\"\"\n";
}

static std::string jobList(const std::vector<SArchiveDeck>& decks, const std::vector<quint32>& shares)
{
    std::string text = "share\tbytes\tsource\ttarget\n";
    for (size_t i = 0; i < decks.size(); ++i)
        text += std::to_string(shares[i]) + '\t' + std::to_string(decks[i].bytes) + '\t' + oneLine(decks[i].source) +
                '\t' + oneLine(decks[i].target) + '\n';
    return text;
}

EExitCode runPlan(const SPlanOptions& options)
{
    std::vector<SArchiveDeck> decks = findDecks(options.inputs, options.folder, options.followLinks);
    sortBySize(decks);
    const std::vector<quint32> shares = shareOut(decks, options.shards);
    std::vector<double> bytes(options.shards, 0.0);
    std::vector<quint64> counts(options.shards, 0);
    for (size_t i = 0; i < decks.size(); ++i) {
        bytes[shares[i] - 1] += static_cast<double>(decks[i].bytes);
        ++counts[shares[i] - 1];
    }
    const std::string folder = options.folder + "/brenmark-plan";
    makeTargetFolder(QFile::decodeName(QByteArray::fromStdString(folder + "/jobs.tsv")));
    const std::pair<const char*, std::string> files[] = {{"jobs.tsv", jobList(decks, shares)},
                                                         {"slurm.sh", slurmScript(options)},
                                                         {"parallel.sh", parallelScript(options)},
                                                         {"Snakefile", snakefile(options)}};
    for (const auto& [name, content] : files)
        realDisk().writeFile(folder + '/' + name, content);
    unlessReaderIsGone([&] {
        for (quint32 share = 0; share < options.shards; ++share)
            printResult("  share " + std::to_string(share + 1) + " of " + std::to_string(options.shards) + ": " +
                        countText(counts[share], "deck") + ", " + sizeText(bytes[share]) + '\n');
        printResult("In " + oneLine(folder) +
                    ": jobs.tsv, slurm.sh for sbatch, parallel.sh for GNU parallel, and Snakefile.\n"
                    "brenmark report " +
                    shellQuoted(options.folder) + " adds the journals of the shares up.\n");
        flushResult();
    });
    return eExitDone;
}

} // namespace NBrenmark
