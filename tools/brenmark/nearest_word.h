#pragma once
// What a mistyped word was meant to be.

#include <string>
#include <vector>

namespace NBrenmark {

/// The nearest of some words, if it is near enough to have been meant; else empty. A beginning is as near as the word.
std::string nearestOf(const std::string& word, const std::vector<std::string>& words);

} // namespace NBrenmark
