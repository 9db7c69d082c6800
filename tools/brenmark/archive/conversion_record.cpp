#include "brenmark/archive/conversion_record.h"

#include "brenmark/disk.h"
#include "brenmark/terminal.h"

#include <fstream>
#include <iterator>

namespace NBrenmark {

/// A damaged deck may have as many kinds of losses as it has bytes.
static std::vector<std::string> lossesOf(const Ledger& messages)
{
    constexpr size_t mostLosses = 100, longestLoss = 1000;
    std::vector<std::string> losses =
        linesOf(messages, [](const SLogRecord& message) { return isDamage(message.effect); });
    const size_t count = losses.size();
    if (count > mostLosses) {
        losses.resize(mostLosses);
        losses.push_back("and " + std::to_string(count - mostLosses) + " more kinds");
    }
    for (std::string& loss : losses)
        if (loss.size() > longestLoss)
            loss = loss.substr(0, longestLoss) + "...";
    return losses;
}

SDeckOutcome outcomeOf(const SConversionResult& result)
{
    SDeckOutcome outcome;
    outcome.losses = lossesOf(result.run.messages);
    outcome.state = outcome.losses.empty() ? eDeckConverted : eDeckWithLosses;
    outcome.code = result.code;
    outcome.bytesRead = result.bytesRead;
    outcome.bytesWritten = result.bytesWritten;
    outcome.timesteps = result.timesteps;
    outcome.seconds = result.run.seconds;
    outcome.digest = result.digest.whole.empty() && result.verification ? result.verification->sourceDigest.whole
                                                                        : result.digest.whole;
    return outcome;
}

void takeFailure(SDeckOutcome& outcome, const CFailure& failure)
{
    outcome.state = failure.code == eExitInterrupted ? eDeckInterrupted : eDeckFailed;
    outcome.reason = reasonOf(failure.causeWord());
    outcome.code = failure.code;
    outcome.text = withoutEnd(failure.what()) + (failure.advice.empty() ? "" : ". " + failure.advice);
}

void writeRecord(const std::string& path, const SDeckOutcome& outcome)
{
    const std::string unfinished = path + ".new";
    realDisk().writeFile(unfinished, jsonOutcome(outcome).dump(1, ' ', false, Json::error_handler_t::replace) + '\n');
    realDisk().sync(unfinished);
    realDisk().rename(unfinished, path);
    realDisk().sync(path.substr(0, path.rfind('/')));
}

std::optional<SDeckOutcome> readRecord(const std::string& path)
{
    constexpr std::streamoff longest = 1 << 24; // bytes
    std::ifstream file(path, std::ios::binary | std::ios::ate);
    if (!file.is_open() || file.tellg() > longest)
        return std::nullopt;
    file.seekg(0);
    try {
        return outcomeFrom(Json::parse(std::string(std::istreambuf_iterator<char>(file), {})));
    }
    catch (const nlohmann::json::exception&) {
        return std::nullopt;
    }
}

} // namespace NBrenmark
