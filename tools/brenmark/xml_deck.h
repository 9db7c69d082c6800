#pragma once
// Documents read into a deck that is only in memory.

#include "brenmark/deck_reader.h"

#include "xml/document.h"

#include <QFile>

namespace NBrenmark {

/// Whether the first bytes of a path are those of a document rather than of a deck.
bool isDocument(const QString& path);

/// Whether a document is of a definition or of a timestep. \throws CFailure  with path, line and column
EXmlDocument kindOfDocument(const QString& path);

/// A document opened. \throws CFailure
class COpenDocument
{
public:
    explicit COpenDocument(const QString& path);

    QString path;
    QFile file;
};

class CXmlDeck
{
public:
    /// Reads a definition and, unless its path is empty, a timestep of it.
    /// \throws CFailure  with path, line and column
    CXmlDeck(const QString& definition, const QString& timestep);

    CSimulation& simulation() const { return library.simulation(); }
    SSimulationFrame& frame() const { return *simulation().currentFrame; }
    const Ledger& messages() const { return logger.records(); }

private:
    CPersistentLogger logger{eWarning};
    COpenLibrary library{logger};
};

/// A failure of the library as the command line reports it.
/// \param path  of the document that was worked on
CFailure failureOfDocument(const std::exception& error, const QString& path);

} // namespace NBrenmark
