#pragma once
// A deck's files on disk, as the command line sees them: how large they are, and how a new deck is called.

#include "core/deck/family_files.h"

#include <QString>
#include <QStringList>

namespace NBrenmark {

/// Sum of the sizes, bytes.
qint64 bytesOf(const QStringList& files);

/// The path of the new deck that OUT means: a folder means the source's name inside it, and a
/// name without .dem gets it. The folder need not exist.
QString targetPath(const QString& source, const QString& out);

} // namespace NBrenmark
