#pragma once
// What the upgrades of a legacy model mean to change: a fixed list of places in its text, each with the test that a
// change there must pass. It knows the upgrades by what they promise and not by their code.

#include <string>
#include <utility>
#include <vector>

namespace NBrenmark {

using TextLine = std::pair<std::string, std::string>; // path, value
using TextLines = std::vector<TextLine>;

/// One line of a model that reads otherwise than it is stored. An empty side stands for a line that isn't there.
struct SModelChange
{
    std::string upgrade; ///< which means it; empty if none does
    std::string path;
    std::string stored;
    std::string upgraded;
};

/// All lines in which the two texts of one model differ.
/// \param stored    as the file has it
/// \param upgraded  as it is read
/// \param root      with which all paths begin: "creator"
std::vector<SModelChange> modelChanges(const TextLines& stored, const TextLines& upgraded, const std::string& root);

} // namespace NBrenmark
