#pragma once
// The classes of selections, and how a file's word becomes one.

#include <QString>
#include <QStringList>

#include <memory>
#include <string>

namespace NBrenmark {
class CDisplayOptions;
}

namespace NBrenmark::NSelection {

class CSelection;

/// The words by which files name the classes.
QStringList selectionTypeIds();

/// A selection of a class; null for a word that names none.
std::unique_ptr<CSelection> createSelection(const QString& typeId, const std::string& name, CDisplayOptions& particle,
                                            CDisplayOptions& contact);

} // namespace NBrenmark::NSelection
