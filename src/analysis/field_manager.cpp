#include "analysis/field_manager.h"

#include "core/log.h"
#include "core/not_carried.h"
#include "core/progress.h"

#include <QDataStream>
#include <QIODevice>
#include <QString>
#include <stdexcept>

namespace NBrenmark::NField {

/// Name, id, plane and two counts: no field is smaller.
static constexpr qint64 leastFieldBytes = 5 * 4;
/// X-Y, X-Z, Y-Z, X-Y-Z.
static constexpr qint32 lastPlane = 3;

bool CFieldManager::write(QDataStream& stream, IProgressController* progress)
{
    if (progress)
        progress->startStep(0, QStringLiteral("Writing Field Data"), true);
    stream << qint32(0);
    if (progress)
        progress->endStep();
    setModified(false);
    return stream.status() == QDataStream::Ok;
}

bool CFieldManager::read(QDataStream& stream, IProgressController* progress)
{
    clear(false);
    qint32 count = 0;
    stream >> count;
    if (stream.status() != QDataStream::Ok || count < 0) {
        logMessage(eWarning, "Settings", "Fields not read: their number is cut off or negative.");
        return false;
    }
    const qint64 bytesLeft = stream.device()->bytesAvailable();
    if (count > bytesLeft / leastFieldBytes)
        throw std::length_error(std::to_string(count) + " fields announced, " + std::to_string(bytesLeft) +
                                " bytes follow");
    if (progress) {
        progress->startStep(count, QStringLiteral("Reading Field Data"), true);
        progress->endStep();
    }
    if (count > 0) {
        // Only what is a field indeed is refused; anything else is damage, and costs this block alone.
        QString name;
        qint32 id = 0;
        qint32 plane = 0;
        stream >> name >> id >> plane;
        if (stream.status() == QDataStream::Ok && !name.isEmpty() && plane >= 0 && plane <= lastPlane)
            throw not_carried_error("fields of imported data (\"" + name.left(80).toStdString() + "\")");
        logMessage(eWarning, "Settings", "Fields not read: the first of them has no name or no plane.");
        return false;
    }
    setModified(false);
    return true;
}

} // namespace NBrenmark::NField
