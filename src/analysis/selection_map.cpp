#include "analysis/selection_map.h"

#include "core/log.h"
#include "core/not_carried.h"
#include "core/progress.h"

#include <QDataStream>
#include <QIODevice>
#include <QString>
#include <algorithm>
#include <stdexcept>

namespace NBrenmark::NSelection {

/// The words by which a file names the classes of selections.
static const char* const typeIdentifiers[] = {"Manual Selection",
                                              "Lattice Bin Group",
                                              "CAD Template Bin Group",
                                              "Primitive Geometry Bin",
                                              "Primitive Mass Flow Sensor",
                                              "Primitive Total Mass Sensor",
                                              "Primitive Velocity Profile Sensor",
                                              "Primitive Segregation Sensor",
                                              "Primitive Bulk Density Sensor"};

/// Type identifier, two names and a flag: no selection is smaller.
static constexpr qint64 leastSelectionBytes = 3 * 4 + 1;

bool CSelectionMap::write(QDataStream& stream, IProgressController* progress)
{
    if (progress)
        progress->startStep(0, QStringLiteral("Writing Selections"), true);
    stream << qint32(0);
    if (progress)
        progress->endStep();
    setModified(false);
    return stream.status() == QDataStream::Ok;
}

bool CSelectionMap::read(QDataStream& stream, IProgressController* progress)
{
    clear(true);
    qint32 count = 0;
    stream >> count;
    if (stream.status() != QDataStream::Ok || count < 0) {
        logMessage(eWarning, "Settings", "Selections not read: their number is cut off or negative.");
        return false;
    }
    const qint64 bytesLeft = stream.device()->bytesAvailable();
    if (count > bytesLeft / leastSelectionBytes)
        throw std::length_error(std::to_string(count) + " selections announced, " + std::to_string(bytesLeft) +
                                " bytes follow");
    if (progress) {
        progress->startStep(count, QStringLiteral("Reading Selections"), true);
        progress->endStep();
    }
    if (count > 0) {
        // Only what is a selection indeed is refused; anything else is damage, and costs this block alone.
        QString typeIdentifier;
        stream >> typeIdentifier;
        const bool isSelection = std::any_of(std::begin(typeIdentifiers), std::end(typeIdentifiers),
                                             [&](const char* known) { return typeIdentifier == QLatin1String(known); });
        if (isSelection)
            throw not_carried_error("selections");
        logMessage(eWarning, "Settings",
                   "Could not create selection (Unknown ID): " + typeIdentifier.left(80).toStdString());
        return false;
    }
    setModified(false);
    return true;
}

} // namespace NBrenmark::NSelection
