// The property file of an old deck. It is read as a whole or not at all: half of a list would give values to the wrong
// properties.
#include "core/log.h"
#include "core/plain_file.h"
#include "core/shortened.h"
#include "legacy/legacy_custom_property_manager.h"
#include "visitors/settings_streams.h"

#include <QDataStream>
#include <QFile>
#include <QString>
#include <algorithm>
#include <memory>
#include <vector>

namespace NBrenmark {

using namespace NLegacySupport;

static const QString header = QStringLiteral("Property Manager Configuration");

/// A name without letters, three numbers and the initial value.
static constexpr qint64 leastRecordBytes = 4 + 3 * 4 + 8;

/// The header's length comes first: compared as bytes, so that a damaged one has nothing read for it.
static bool takeHeader(QDataStream& stream)
{
    QByteArray expected;
    QDataStream pattern(&expected, QIODevice::WriteOnly);
    pattern << header;
    QByteArray found(expected.size(), '\0');
    return stream.readRawData(found.data(), found.size()) == found.size() && found == expected;
}

/// One definition; null, with the reason, if the stream has none.
static std::unique_ptr<CCustomPropertyMetaData> readRecord(QDataStream& stream, std::string& reason)
{
    QString name;
    qint32 dataType = 0;
    qint32 numberOfElements = 0;
    qint32 unitsType = 0;      // code of the quantity, not of a unit
    double defaultValue = 0.0; // of every element, of a yes or no as well
    stream >> name >> dataType >> numberOfElements >> unitsType >> defaultValue;
    if (stream.status() != QDataStream::Ok) {
        reason = "the file ends in a property";
        return nullptr;
    }
    if (numberOfElements < 0) {
        reason = "property \"" + shortened(name) + "\" has " + std::to_string(numberOfElements) + " elements";
        return nullptr;
    }
    const unsigned int elements =
        std::min(static_cast<unsigned int>(numberOfElements), CCustomPropertyMetaData::mostElements);
    return std::make_unique<CCustomPropertyMetaData>(name.toStdString(), static_cast<unsigned int>(dataType), elements,
                                                     static_cast<unsigned int>(unitsType),
                                                     std::vector<double>(elements, defaultValue));
}

int NSettingsFamily::readPropertyFile(CLegacyCustomPropertyManager& manager)
{
    const std::string& path = manager.propertyFilePath();
    if (path.empty())
        return ePropertyFileRead;
    QFile file(QString::fromStdString(path));
    if (!file.exists())
        return ePropertyFileMissing; // the rule: only old decks have such a file
    const auto failed = [&path](int result, const std::string& reason) {
        reportFailure(NLogTitle::settings, path + ": " + reason, eCauseSource);
        return result;
    };
    if (const std::string cause = openPlainFile(file); !cause.empty())
        return failed(ePropertyFileNotOpened, cause);

    manager.clear(true); // the settings' own definitions give way
    const auto refused = [&](const std::string& reason) {
        manager.clear(true);
        return failed(ePropertyFileRefused, reason + ", no property is taken from it.");
    };
    QDataStream stream(&file); // in the form of the Qt of the day, unlike every other file of a deck
    if (!takeHeader(stream))
        return refused("the header of a property file is missing");
    qint32 formatWord = 0;     // no reader tests it
    qint32 lastFinalised = -1; // number of the last property of which decks hold values
    qint32 count = 0;
    stream >> formatWord >> lastFinalised >> count;
    if (stream.status() != QDataStream::Ok)
        return refused("the file ends before its properties");
    if (count > file.bytesAvailable() / leastRecordBytes) // below 0: no record, and no error
        return refused(std::to_string(count) + " properties announced, " + std::to_string(file.bytesAvailable()) +
                       " bytes follow");

    for (qint32 i = 0; i < count; ++i) {
        std::string reason;
        std::unique_ptr<CCustomPropertyMetaData> record = readRecord(stream, reason);
        if (!record)
            return refused(reason);
        const std::string recordName = record->name;
        if (!manager.addProperty(record))
            return refused("the property name \"" + shortened(recordName) + "\" isn't valid or is there twice");
    }
    if (const qint64 left = file.bytesAvailable(); left > 0)
        report(eLost, NLogTitle::settings,
               path + ": " + std::to_string(left) + " bytes after the last property were left out.", left);
    const int lastInSequence = std::clamp(lastFinalised, -1, static_cast<int>(manager.propertyCount()) - 1);
    if (lastInSequence != lastFinalised)
        report(eRepaired, NLogTitle::settings,
               path + ": last finalized property " + std::to_string(lastFinalised) + " of " +
                   std::to_string(manager.propertyCount()) + " taken as " + std::to_string(lastInSequence) + ".");
    manager.lastFinalisedPropertyIndex = lastInSequence;
    manager.setModified(false);
    return ePropertyFileRead;
}

} // namespace NBrenmark
