// The words of the options that go with a deck.
#include "brenmark/deck_options.h"

namespace NBrenmark {

static constexpr struct
{
    bool SDeckOptions::*isGiven;
    const char* word;
} deckFlags[] = {
    {&SDeckOptions::force, "--force"},
    {&SDeckOptions::resume, "--resume"},
    {&SDeckOptions::strict, "--strict"},
    {&SDeckOptions::verify, "--verify"},
    {&SDeckOptions::ignoreCompanions, "--ignore-companions"},
    {&SDeckOptions::noPlugins, "--no-plugins"},
    {&SDeckOptions::digest, "--digest"},
};

std::vector<std::string> wordsOf(const SDeckOptions& options)
{
    std::vector<std::string> words;
    for (const auto& flag : deckFlags)
        if (options.*flag.isGiven)
            words.emplace_back(flag.word);
    return words;
}

} // namespace NBrenmark
