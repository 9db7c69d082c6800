#pragma once
// Opens a deck of either family through the library's own reading, timestep by timestep. One deck
// is open in a process at a time.

#include "brenmark/failure.h"

#include "config/application_roles.h"
#include "core/deck/deck_files.h"
#include "core/deck/simulation.h"
#include "core/log.h"

#include <QString>

#include <optional>

namespace NBrenmark {

/// The library set up to read decks, with the roles that give a configuration its defaults: those that a conversion
/// adds are no difference. Whatever ends it, the deck is let go and nothing is stored:
/// a simulation that ends with an open deck would write settings and configuration beside it.
class COpenLibrary
{
public:
    /// \param log  hears what is said; not owned
    explicit COpenLibrary(ILogModule& log);
    ~COpenLibrary();
    COpenLibrary(const COpenLibrary&) = delete;
    COpenLibrary& operator=(const COpenLibrary&) = delete;

    CSimulation& simulation() const;

private:
    std::optional<SApplicationRoles> roles;
};

/// Whether a legacy model is read as it is meant today, or as its file has it.
enum EModelForm
{
    eUpgradedModel,
    eStoredModel
};

/// Whether all that a file of the current family holds beside what is read is reported, and damage in it costs no more
/// than the part that it is in.
enum EExamination
{
    eNotExamined,
    eExamined
};

/// What is known of a deck, even of one that can't be opened.
struct SDeckHead
{
    EDeckFormat format = eFormatUnknown;
    quint32 firstVersion = 0; ///< created it; 0: not known
    quint32 lastVersion = 0;  ///< wrote it last; 0: not known

    /// "legacy", "HDF5" or "unknown".
    const char* familyName() const;
};

/// What the first bytes of a path say, though all else may be missing. The versions of an HDF5 deck take opening it.
SDeckHead headOf(const QString& path);

class CDeckReader
{
public:
    /// \param head  is filled in, whatever is thrown, where more is known than headOf() finds; may be null
    /// \throws CFailure  no such file, no deck, or one that can't be opened
    explicit CDeckReader(const QString& path, EModelForm form = eUpgradedModel, EExamination examination = eNotExamined,
                         bool ignoreCompanions = false, SDeckHead* head = nullptr);

    EDeckFormat format() const { return deckFormat; }
    SDeckHead head() const;
    quint32 timestepCount() const { return deck().ioManager.timestepCount(); }
    const TimestepIndex& index() const { return deck().index; }
    CSimulation& deck() const { return library.simulation(); }
    const IFileFormatManager& manager() const { return deck().ioManager.active(); }

    /// Loads a timestep. \throws CFailure  it can't be read
    SSimulationFrame& timestep(quint32 number);
    /// The same without reading it again if it was the last one: it is as whoever asked before left it.
    SSimulationFrame& loadedTimestep(quint32 number);
    /// Whether the timestep loaded last brought another model than the one before it; true for the first.
    bool modelChanged() const { return changed; }

    /// What was said so far.
    const Ledger& messages() const { return logger.records(); }

private:
    std::string path; // for messages
    EDeckFormat deckFormat;
    CPersistentLogger logger;
    COpenLibrary library;
    quint32 modelIndex; ///< where the model is stored that was read last
    quint64 modelOffset;
    bool changed = false;
    std::optional<quint32> loaded; ///< the timestep that is in the frame
};

/// The family of a path that can be opened as a deck.
/// \throws CFailure  with what is wrong with the path, and which one was meant
EDeckFormat requireDeck(const QString& path);
/// \throws CFailure  the path leads to a deck that isn't finished, or it isn't there and such a one is beside it
void requireNoPartialDeck(const QString& path);

} // namespace NBrenmark
