#pragma once
// Where the files of a deck of this family are, and which of them are timesteps.

#include "core/deck/deck_files.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace NBrenmark {

QString timestepFilePath(const QString& mainFile, quint32 number);

/// Number of a timestep's file by its name, "12.h5"; nothing for other names, "x5.h5" among them.
std::optional<quint32> timestepNumber(const QString& fileName);

/// Names of the files in a deck's folder that pass for data files, in the order of their numbers.
QStringList dataFileNames(const QString& folder);

} // namespace NBrenmark
