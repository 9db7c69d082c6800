#pragma once
// The files of a deck that are there: which, in what state, and whether two decks share one.

#include <QString>
#include <QStringList>

#include <string>
#include <vector>

namespace NBrenmark {

/// Every file that exists of the deck that a path names: the path itself, its companions, segments
/// and numbered files.
QStringList familyFiles(const QString& path);

/// Those of them that a conversion reads: of a legacy deck all but what lies in a folder of numbered files.
QStringList sourceFiles(const QString& path);

/// Why a new deck can't have its name: a file that it would replace or write is one of the source's, by whatever path,
/// link or spelling. Empty if it shares none.
std::string sharedWithSource(const QString& source, const QString& target);

/// A file as it was at one moment: what changes with its content.
struct SFileState
{
    QString path;
    qint64 size = 0;     ///< bytes
    qint64 modified = 0; ///< ns since 1970
    quint64 inode = 0;

    bool operator==(const SFileState& other) const
    {
        return path == other.path && size == other.size && modified == other.modified && inode == other.inode;
    }
};
using FileStates = std::vector<SFileState>;

/// In the order of the files; one that is gone has size -1.
FileStates fileStates(const QStringList& files);
/// What differs first, "pile.dem.scn.1 has changed" with its whole path; empty for nothing.
std::string changeBetween(const FileStates& before, const FileStates& now);

} // namespace NBrenmark
