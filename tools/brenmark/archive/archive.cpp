#include "brenmark/archive/archive.h"

#include "brenmark/archive/archive_run.h"
#include "brenmark/archive/dry_run.h"
#include "brenmark/archive/shares.h"
#include "brenmark/failure.h"
#include "brenmark/units_text.h"

#include <algorithm>

namespace NBrenmark {

std::vector<std::string> optionWords(const SArchiveOptions& options)
{
    std::vector<std::string> words = wordsOf(options);
    const auto add = [&words](bool isGiven, const std::string& word) {
        if (isGiven)
            words.push_back(word);
    };
    add(options.followLinks, "--follow-links");
    add(options.skipExisting, "--skip-existing");
    add(options.retryFailed, "--retry-failed");
    add(options.jobs > 0, "-j " + std::to_string(options.jobs));
    add(options.threads > 0, "--threads " + std::to_string(options.threads));
    add(options.memory > 0, "--memory " + sizeText(static_cast<double>(options.memory)));
    add(options.shards > 0, "--shard " + std::to_string(options.shard) + '/' + std::to_string(options.shards));
    add(!options.page.empty(), "--report");
    return words;
}

EExitCode runArchive(const SArchiveOptions& options)
{
    std::vector<SArchiveDeck> decks = findDecks(options.inputs, options.folder, options.followLinks);
    if (decks.empty())
        throw CFailure(eExitSource, options.inputs.front() + ": there is no deck in it",
                       "Name decks, or folders with files NAME.dem in them or below them.");
    sortBySize(decks);
    if (options.shards > 0) {
        const std::vector<quint32> shares = shareOut(decks, options.shards);
        std::vector<SArchiveDeck> own;
        for (size_t i = 0; i < decks.size(); ++i)
            if (shares[i] == options.shard)
                own.push_back(std::move(decks[i]));
        decks = std::move(own);
    }
    decks.shrink_to_fit();
    return options.dryRun ? runDry(options, std::move(decks)) : CArchiveRun(options, std::move(decks)).run();
}

} // namespace NBrenmark
