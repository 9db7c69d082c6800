#include "brenmark/archive/deck_outcome.h"

#include <algorithm>
#include <array>
#include <utility>

namespace NBrenmark {

static constexpr std::array stateWords{"waiting", "started", "converted",  "converted with losses",
                                       "skipped", "failed",  "interrupted"};

const char* deckStateName(EDeckState state) { return stateWords[state]; }

EDeckState deckStateFrom(const std::string& name)
{
    const auto* const found = std::find(stateWords.begin(), stateWords.end(), name);
    return found == stateWords.end() ? eDeckWaiting : static_cast<EDeckState>(found - stateWords.begin());
}

std::string reasonOf(const std::string& causeWord)
{
    static constexpr std::array<std::pair<const char*, const char*>, 10> reasons{
        {{"source", "the source is missing or damaged"},
         {"target", "the target can't be written"},
         {"names", "names that the new family can't hold"},
         {"unsupported", "not a deck that is supported"},
         {"memory", "too little memory"},
         {"difference", "the new deck differs from its source"},
         {"usage", "the path can't be used"},
         {"output", "the target can't be written"},
         {"interrupted", "interrupted"},
         {"nothing to do", "nothing to convert"}}};
    for (const auto& [word, reason] : reasons)
        if (causeWord == word)
            return reason;
    return "an unexpected failure";
}

Json jsonOutcome(const SDeckOutcome& outcome)
{
    Json object{{"deck", outcome.deck}, {"state", deckStateName(outcome.state)}};
    const auto put = [&object](const char* name, const auto& value, bool isSaid) {
        if (isSaid)
            object[name] = value;
    };
    const bool hasDeck = isMade(outcome.state);
    put("reason", outcome.reason, !outcome.reason.empty());
    put("code", outcome.code, outcome.code != 0 || isFinal(outcome.state));
    put("text", outcome.text, !outcome.text.empty());
    put("losses", outcome.losses, !outcome.losses.empty());
    put("timesteps", outcome.timesteps, hasDeck || outcome.timesteps > 0);
    put("bytesRead", outcome.bytesRead, hasDeck || outcome.bytesRead > 0);
    put("bytesWritten", outcome.bytesWritten, hasDeck || outcome.bytesWritten > 0);
    put("seconds", outcome.seconds, hasDeck || outcome.seconds > 0.0);
    put("digest", outcome.digest, !outcome.digest.empty());
    put("sourceFiles", outcome.sourceFiles, !outcome.sourceFiles.empty());
    put("sourceBytes", outcome.sourceBytes, !outcome.sourceBytes.empty());
    if (!outcome.page.empty())
        object["page"] = Json::parse(outcome.page, nullptr, false);
    put("targetFiles", outcome.targetFiles, !outcome.targetFiles.empty());
    return object;
}

SDeckOutcome outcomeFrom(const Json& object)
{
    SDeckOutcome outcome;
    outcome.deck = object.at("deck").get<std::string>();
    outcome.state = deckStateFrom(object.at("state").get<std::string>());
    outcome.reason = object.value("reason", std::string());
    outcome.code = object.value("code", 0);
    outcome.text = object.value("text", std::string());
    outcome.losses = object.value("losses", std::vector<std::string>());
    outcome.timesteps = object.value("timesteps", 0U);
    outcome.bytesRead = object.value("bytesRead", qint64(0));
    outcome.bytesWritten = object.value("bytesWritten", qint64(0));
    outcome.seconds = object.value("seconds", 0.0);
    outcome.digest = object.value("digest", std::string());
    outcome.sourceFiles = object.value("sourceFiles", std::string());
    outcome.sourceBytes = object.value("sourceBytes", std::string());
    if (const auto page = object.find("page"); page != object.end())
        outcome.page = page->dump(-1, ' ', false, Json::error_handler_t::replace);
    outcome.targetFiles = object.value("targetFiles", std::string());
    return outcome;
}

} // namespace NBrenmark
