#pragma once
// Where the user keeps documents.

#include <QString>

namespace NBrenmark {

/// The user's documents folder with "/" as separator and at the end.
QString documentsFolder();

} // namespace NBrenmark
