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

/// Asks whether a stored deck must be converted, and converts it.
///
/// A conversion runs on the caller's thread inside one call, and one conversion runs in a process
/// at a time; an object may be used for several, one after the other. The source's files are only
/// read. Signals are emitted from the caller's thread. After a conversion, getError gives a text
/// for the user (it may be empty), and getLogMessages what was dropped, mended or failed.
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

    CDataConverter();
    ~CDataConverter() override;

    /// True exactly when the file is a deck of the legacy family. Needs no object.
    static bool legacyDataConversionRequired(const QString& path);

    /// Converts a legacy deck. An existing target of that name is deleted first; its base must
    /// differ from the source's. Input that needs no conversion is success without any effect.
    /// \param inputPath   the deck's first file, in UTF-8; a null pointer means an empty path
    /// \param outputPath  the new deck's first file, in UTF-8
    /// \return true if the deck was converted or there was nothing to do
    bool convertSimulationData(const char* inputPath, const char* outputPath);

    /// The error text of the last conversion; empty after success, and after failures that have none.
    QString getError() const;
    /// Level (4 warning, 5 error), title and text of each message of the last conversion.
    std::vector<std::tuple<int, std::string, std::string>> getLogMessages() const;

signals:
    /// Emitted once, when the number of timesteps is known: two steps for each.
    void starting(int maxSteps, const QString& title, bool infinite = false);
    /// For hosts; a conversion gives the total through starting.
    void maxSteps(int maxSteps);
    void currentStepUpdate(int value);
    /// Emitted once, when all timesteps were written and the companion files have been seen to.
    void completed();

public slots:
    /// Stops the conversion behind the timestep in hand. May be called from any thread and from a
    /// signal handler.
    void cancel();

private:
    struct SState; // hidden, so that its growth changes nothing for hosts that were compiled before
    std::unique_ptr<SState> state;
};

} // namespace NBrenmark
