#pragma once
// Which decks an archive has, and where each goes. A deck is its main file: what belongs to it counts for its size and
// is none by itself. Paths are in the encoding of the file system.

#include <QtGlobal>

#include <string>
#include <vector>

namespace NBrenmark {

struct SArchiveDeck
{
    std::string source;  ///< absolute
    std::string target;  ///< below DIR
    qint64 bytes = 0;    ///< of all its files
    std::string files;   ///< names, sizes and times of them, digested as by sourceFilesDigest()
    std::string problem; ///< why it can't be tried, with a path; empty for none
    int code = 0;        ///< exit code of the problem
};

/// The decks of some inputs, by their paths: files, wildcards, and folders with all below them. The tree below the
/// nearest folder that all inputs share is kept. Folders that can't be read and names that clash are listed as decks
/// with a problem. Each folder is entered once, so that links in a circle come to an end.
/// \param folder       DIR
/// \param followLinks  to folders
/// \throws CFailure    an input isn't there, or DIR is in one of the trees
std::vector<SArchiveDeck> findDecks(const std::vector<std::string>& inputs, const std::string& folder,
                                    bool followLinks);

} // namespace NBrenmark
