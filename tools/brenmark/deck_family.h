#pragma once
// A deck's files on disk, as the command line sees them: which there are, how large they are, and
// whether writing one deck could touch another.

#include <QString>
#include <QStringList>

namespace NBrenmark {

/// Every file that exists of the deck that a path names: the path itself, its companions, segments
/// and numbered files.
QStringList familyFiles(const QString& path);

/// Sum of the sizes, bytes.
qint64 bytesOf(const QStringList& files);

/// The path of the new deck that OUT means: a folder stands for the source's name inside it, and a
/// name without .dem gets it. The folder need not exist.
QString targetPath(const QString& source, const QString& out);

/// Makes the folder of a new deck, with those above it, where it is missing.
/// \throws CFailure
void makeTargetFolder(const QString& target);

/// Sees to it that a conversion overwrites nothing that it shouldn't: neither a file of the source,
/// by whatever path, link or spelling, nor without force an existing deck.
/// \throws CFailure
void requireFreeTarget(const QString& source, const QString& target, bool force);

} // namespace NBrenmark
