#pragma once
// Digests of a deck's files, by which a run that goes on sees whether they are as they were.

#include <QString>

#include <string>
#include <vector>

namespace NBrenmark {

struct SDeckFile
{
    std::string name; ///< without its folder
    qint64 size;      ///< bytes
    qint64 modified;  ///< ns since 1970
};

/// Names, sizes and times, in any order.
std::string filesDigest(std::vector<SDeckFile> files);

/// Names, sizes and times of a source's files. No content is read.
std::string sourceFilesDigest(const QString& source);
/// Names and bytes of a source's files. \throws CFailure  one can't be read
std::string sourceBytesDigest(const QString& source);
/// Names and sizes of the files of a deck of the current family; empty if its main file isn't there.
std::string deckFilesDigest(const QString& deck);

} // namespace NBrenmark
