#pragma once
// Converts a stored deck of the legacy file family into the HDF5 family.

#include "export.h"

#include <QObject>
#include <QString>

#include <memory>
#include <string>
#include <tuple>
#include <vector>

namespace NBrenmark {

/// One message of a conversion with all that is known of it: those with an effect are the ledger of
/// what happened to the data. Texts are UTF-8.
struct SConversionMessage
{
    enum ELevel
    {
        eWarning = 4,
        eError = 5
    };
    enum EEffect
    {
        eRemark = 0,       ///< nothing of the data changed
        eLost = 1,         ///< damage: what the source holds there can't be read and isn't in the new deck
        eDefaulted = 2,    ///< damage: a default stands in for what is missing or can't be read
        eRepaired = 3,     ///< values that contradict each other were made to agree
        eUpgraded = 4,     ///< an old model was brought to the form of today, as is meant
        eNotCarried = 5,   ///< the new family has no place for it
        eCarriedUnread = 6 ///< carried as its bytes, which nothing here understands
    };
    enum ECause
    {
        eCauseNone = 0,        ///< nothing failed
        eCauseSource = 1,      ///< what is read is missing, damaged or can't be opened
        eCauseTarget = 2,      ///< what is written can't be
        eCauseNames = 3,       ///< a name or text that the new family can't hold
        eCauseUnsupported = 4, ///< sound, and of a later version than this library knows, or of another kind
        eCauseMemory = 5,      ///< too little memory
        eCauseInternal = 6     ///< a fault of the library, or of the call
    };

    /// Whether the source was damaged there, and the new deck holds less than the source once did.
    bool isDamage() const { return effect == eLost || effect == eDefaulted; }

    ELevel level = eWarning;
    std::string title; ///< what was being done: "Legacy read"
    std::string text;  ///< what happened, without the place
    EEffect effect = eRemark;
    ECause cause = eCauseNone;    ///< of a failure
    std::string file;             ///< name without its folder: "pile.dem.scn.1"; empty outside of files
    long long timestep = -1;      ///< counted from 0; -1 outside of timesteps
    std::string block;            ///< "contacts", "creator data"; empty outside of blocks
    std::string object;           ///< the name of one material, group, property, ...; empty for none
    unsigned long long count = 1; ///< of the rows, values or objects that it is about
};

/// Asks whether a stored deck must be converted, and converts it.
///
/// A conversion runs on the caller's thread inside one call, with short-lived worker threads of its
/// own, and spins no event loop. Signals are emitted from the caller's thread, so that slots of
/// objects that live there run inside the call; those of other threads' objects are queued to them.
///
/// One conversion runs in a process at a time. A second one, from whatever thread or object or from
/// inside a signal, fails at once with eBusy and touches nothing of the first. An object may be used
/// for several, one after the other. The source's files are only read.
///
/// After a conversion, outcome says how it ended, failureText gives a text for the user, and
/// messages what was lost, repaired, upgraded or failed. The results may be asked from any thread.
class BRENMARK_EXPORT CDataConverter : public QObject
{
    Q_OBJECT
public:
    enum EConvertFormat
    {
        eFormatUnknown = 0, ///< missing, unreadable or in no known format
        eFormatLegacy = 1,
        eFormatHdf5 = 2
    };

    /// How the last conversion of an object ended.
    enum EOutcome
    {
        eNotRun = 0,
        eConverted = 1,   ///< true; messages says whether anything was lost through damage
        eNothingToDo = 2, ///< true without any effect: the input's first bytes are those of the HDF5 family already
        eNotADeck = 3,    ///< true without any effect: a folder, a text file, ...; failureText says what
        eCancelled = 4,   ///< false: whole timesteps are left at the target, up to where cancel came, without settings
        eFailed = 5,      ///< false
        eBusy = 6         ///< false: another conversion is running in this process; also while this object's own runs
    };

    CDataConverter();
    ~CDataConverter() override;

    /// True exactly when the file is a deck of the legacy family. Needs no object. From any thread.
    static bool legacyDataConversionRequired(const QString& path);

    /// Converts a legacy deck. An existing target of that name is deleted first; its base must
    /// differ from the source's. Input that needs no conversion is success without any effect.
    /// \param inputPath   the deck's first file, in UTF-8; a null pointer means an empty path
    /// \param outputPath  the new deck's first file, in UTF-8
    /// \return true if the deck was converted or there was nothing to do. After false outcome says why: eCancelled is
    ///         the user's wish and no fault, eFailed has a failureText and errors in messages whose cause says where the
    ///         fault is, eBusy leaves nothing to do but to wait
    bool convertSimulationData(const char* inputPath, const char* outputPath);

    /// Whether the conversions that begin from now on bind the plug-ins that a deck names, from the user's folders.
    /// They don't unless this is called: a library runs its code in this process as soon as it is loaded, and one that
    /// crashes ends the process. While the environment has BRENMARK_NO_PLUGINS nothing is bound in any case.
    void bindPlugins(bool bind);

    /// How the last conversion ended.
    EOutcome outcome() const;
    /// What came between the user and a new deck: getError, and below it the first error of the log
    /// with its place. Empty for eNotRun, eConverted and eNothingToDo, and for those alone.
    QString failureText() const;
    /// The error text of the last conversion; empty after success, and after failures that have none.
    QString getError() const;
    /// Level (4 warning, 5 error), title and text of each message of the last conversion; the text
    /// begins with its place.
    std::vector<std::tuple<int, std::string, std::string>> getLogMessages() const;
    /// The same messages with all that is known of them.
    std::vector<SConversionMessage> messages() const;

Q_SIGNALS:
    /// Emitted once, when the number of timesteps is known: two steps for each.
    void starting(int maxSteps, const QString& title, bool infinite = false);
    /// For hosts; a conversion gives the total through starting.
    void maxSteps(int maxSteps);
    /// The last value is the total, whatever ended the conversion: a bar that is full says nothing
    /// about success.
    void currentStepUpdate(int value);
    /// Emitted once, when all timesteps were written and the companion files have been seen to. One of
    /// those may have failed: the result of the call has the last word.
    void completed();

public Q_SLOTS:
    /// Stops the conversion after the current timestep. Lock-free: may be called from any thread and
    /// from a signal handler. Connect it with Qt::DirectConnection, or call it directly: a queued
    /// connection, which Qt chooses between threads, needs an event loop on the thread of this object,
    /// and a conversion that runs there spins none. A cancel before the conversion began has no effect.
    void cancel();

private:
    struct SState; // hidden, so that its growth changes nothing for hosts that were compiled before
    std::unique_ptr<SState> state;
};

} // namespace NBrenmark
