// Reads and writes the blocks of the settings file, and finds the next block after a damaged one.
#include "config/settings_file.h"

#include "config/file_replacer.h"
#include "core/background_read_write.h"
#include "core/cause.h"
#include "core/data_place.h"
#include "core/log.h"
#include "core/messages.h"
#include "core/plain_file.h"
#include "core/progress.h"
#include "core/stop_flag.h"
#include "core/version_history.h"
#include "core/versioned_stream.h"

#include <QFile>
#include <QIODevice>
#include <algorithm>
#include <exception>
#include <limits>
#include <utility>

namespace NBrenmark {

static const QString fileMarker = QStringLiteral("ESS FILE");
static constexpr char startMarker[] = "ESS_BLOCK_";
static constexpr char endMarker[] = "ESS_END___";
static constexpr int markerLength = 10;

/// A file of nothing but block starts would fill the log.
static constexpr int mostReportedBlocks = 100;

CSettingsFile::CSettingsFile(std::vector<SSettingsEntry> entries) : entries(std::move(entries)) {}

void CSettingsFile::setEntries(std::vector<SSettingsEntry> list) { entries = std::move(list); }

void CSettingsFile::clearSettings(bool notify)
{
    for (const SSettingsEntry& entry : entries)
        entry.entry->clear(notify);
    settingsDirty = notify;
    lastVersion = 0;
    lastEdition = 0;
    damagedBlocks = 0;
}

const SSettingsEntry* CSettingsFile::entryOf(qint32 identifier) const
{
    const auto found = std::find_if(entries.begin(), entries.end(),
                                    [&](const SSettingsEntry& entry) { return entry.identifier == identifier; });
    return found == entries.end() ? nullptr : &*found;
}

// ---------------------------------------------------------------- reading

/// Reads the header and gives the stream its version and edition.
static bool readHeader(CVersionedStream& stream, std::string& text)
{
    // Compared as bytes: a damaged length must not have the whole file read for a string.
    QByteArray expected;
    QDataStream pattern(&expected, QIODevice::WriteOnly);
    pattern << fileMarker;
    QByteArray marker(expected.size(), '\0');
    if (stream.readRawData(marker.data(), marker.size()) != marker.size() || marker != expected) {
        text = messageText(eMessageSettingsMarkerWrong).toStdString();
        return false;
    }
    quint32 version = 0;
    stream >> version;
    stream.setFileVersion(version);
    stream.edition = 0;
    if (stream.fileVersion() >= NFileVersion::settingsWithEdition)
        stream >> stream.edition;
    if (stream.status() != QDataStream::Ok)
        text = "The file ends in its header.";
    return stream.status() == QDataStream::Ok;
}

bool CSettingsFile::loadSettings(const QString& fileName, IProgressController* progress)
{
    clearSettings(false);
    const CPlaceScope scope(placeIn(fileName));
    CSourceFile file(fileName);
    if (const std::string cause = openPlainFile(file); !cause.empty()) {
        if (hasEntry(fileName))
            report(eLost, NLogTitle::settings, "The file is left out, it can't be opened: " + cause);
        return true;
    }
    CVersionedStream stream(&file);
    std::string text;
    ECause cause = eCauseNone;
    bool loaded = readHeader(stream, text);
    if (loaded) {
        lastVersion = stream.fileVersion();
        lastEdition = stream.edition;
        CBackgroundReadWriteController reader(*this, stream, false, progress);
        loaded = reader.execute();
        text = reader.errorText();
        cause = reader.errorCause();
    }
    if (!loaded && !text.empty())
        reportFailure(NLogTitle::settings, text, cause == eCauseNone ? eCauseSource : cause);
    return loaded;
}

/// Moves to the next block start from the current position on, or to the end.
static void resynchronise(QIODevice& device)
{
    qint64 candidate = 0;
    int matched = 0;
    char byte = 0;
    while (device.getChar(&byte)) {
        if (byte == startMarker[matched]) {
            if (matched == 0)
                candidate = device.pos() - 1;
            ++matched;
        }
        else if (byte == startMarker[0]) {
            candidate = device.pos() - 1;
            matched = 1;
        }
        else {
            matched = 0;
        }
        if (matched == markerLength) {
            seekTo(device, candidate);
            return;
        }
    }
}

bool CSettingsFile::read(CVersionedStream& stream, IProgressController* progress)
{
    QIODevice& device = *stream.device();
    damagedBlocks = 0;
    while (!stream.atEnd()) {
        leaveIfStopped();
        const unsigned char state = progress ? progress->cancelState() : static_cast<unsigned char>(eGoOn);
        if (state == eCancel) {
            clearSettings(true);
            return false;
        }
        if (state != eGoOn)
            break;
        // Every block starts after the one before, whatever that one says of its length: the reading ends.
        if (!readBlock(stream, progress)) {
            stream.resetStatus();
            if (!stream.atEnd())
                resynchronise(device);
        }
        throwIfUnreadable(device); // which is never at its end
    }
    if (wantsCancel(progress)) {
        clearSettings(true);
        return false;
    }
    if (damagedBlocks > mostReportedBlocks)
        report(eLost, NLogTitle::settings, std::to_string(damagedBlocks - mostReportedBlocks) + " more damaged blocks.",
               static_cast<quint64>(damagedBlocks - mostReportedBlocks));
    settingsDirty = damagedBlocks > 0;
    return true;
}

/// Reports a damaged block, whose entry, if it is known, ends empty. Always false.
/// \throws device_error  the device can't be read, and its blocks need not be damaged
bool CSettingsFile::blockFailed(const QIODevice& device, const SSettingsEntry* entry, qint64 position, EMessage message,
                                const std::string& detail)
{
    throwIfUnreadable(device);
    if (entry)
        entry->entry->clear(true);
    if (++damagedBlocks <= mostReportedBlocks)
        report(eLost, NLogTitle::settings,
               "Block at byte " + std::to_string(position) + (detail.empty() ? "" : " (" + detail + ")") + ": " +
                   messageText(message).toStdString());
    return false;
}

static bool takeMarker(CVersionedStream& stream, const char* marker)
{
    char bytes[markerLength];
    return stream.readRawData(bytes, markerLength) == markerLength && std::equal(bytes, bytes + markerLength, marker);
}

/// Whether a marker is somewhere else; the device stays where it is.
static bool markerStandsAt(QIODevice& device, qint64 position, const char* marker)
{
    const qint64 before = device.pos();
    seekTo(device, position);
    const bool isThere = device.read(markerLength) == QByteArray(marker, markerLength);
    seekTo(device, before);
    return isThere;
}

bool CSettingsFile::readBlock(CVersionedStream& stream, IProgressController* progress)
{
    QIODevice& device = *stream.device();
    const qint64 blockAt = device.pos();
    if (!takeMarker(stream, startMarker))
        return blockFailed(device, nullptr, blockAt, eMessageSettingsNoBlockStart);

    const qint64 lengthAt = device.pos();
    qint32 length = 0;
    qint32 identifier = 0;
    stream >> length >> identifier;
    const bool hasHead = stream.status() == QDataStream::Ok;
    const SSettingsEntry* const entry = hasHead ? entryOf(identifier) : nullptr;
    const CPlaceScope scope(entry ? placeAtWork().inBlock(entry->name) : placeAtWork());
    const qint64 payloadAt = device.pos();
    // A length that leads out of the file, or back before the payload, is damaged itself and taken for nothing.
    const qint64 announcedEnd = lengthAt + length;
    const bool hasEnd = announcedEnd >= payloadAt && announcedEnd <= device.size();
    const auto failed = [&](EMessage message, const std::string& cause = std::string()) {
        const std::string size = hasEnd ? std::to_string(announcedEnd - payloadAt) + " bytes" : "length unknown";
        return blockFailed(device, entry, blockAt, message,
                           "what it held is left out, " + size + (cause.empty() ? "" : ": " + cause));
    };
    if (!entry)
        return failed(eMessageSettingsUnknownEntry,
                      hasHead ? "identifier " + std::to_string(identifier) : std::string());
    const auto entryFailed = [&](EMessage message, const std::string& cause) {
        // An entry with a damaged count may have run through blocks that aren't its own.
        if (hasEnd && device.pos() > announcedEnd)
            seekTo(device, announcedEnd);
        return failed(message, cause);
    };

    try {
        const CBlockLimit limit(stream, hasEnd && markerStandsAt(device, announcedEnd, endMarker) ? announcedEnd : -1);
        if (!entry->entry->read(stream, progress) || stream.status() != QDataStream::Ok)
            return entryFailed(eMessageSettingsEntryRefused, std::string());
    }
    catch (const std::exception& error) {
        if (!meansDamage(error))
            throw; // such as too little memory, which says nothing of the file
        return entryFailed(eMessageSettingsEntryThrew, error.what());
    }

    if (device.pos() - lengthAt != length) {
        if (hasEnd)
            seekTo(device, announcedEnd);
        return failed(eMessageSettingsWrongLength);
    }
    if (!takeMarker(stream, endMarker))
        return failed(eMessageSettingsNoBlockEnd);
    return true;
}

// ---------------------------------------------------------------- writing

bool CSettingsFile::saveSettings(const QString& fileName, IProgressController* progress, bool force,
                                 bool writeCustomProperties)
{
    const bool anyModified = std::any_of(entries.begin(), entries.end(),
                                         [](const SSettingsEntry& entry) { return entry.entry->isModified(); });
    if (!anyModified && !settingsDirty && !force)
        return true;
    const CPlaceScope scope(placeIn(fileName));
    writesCustomProperties = writeCustomProperties;
    const auto failed = [this](const std::string& text) {
        settingsDirty = true; // what isn't saved yet is still to be saved
        if (!text.empty())
            reportFailure(NLogTitle::settings, text, eCauseTarget);
        return false;
    };

    CFileReplacement replacement;
    if (!replacement.isOpen())
        return failed("The temporary file can't be opened: " + replacement.cause());
    {
        CVersionedStream stream(&replacement.device());
        stream << fileMarker << qint32(currentFileVersion()) << qint32(0);
        CBackgroundReadWriteController writer(*this, stream, true, progress);
        if (!writer.execute())
            return failed(writer.errorText());
        if (stream.status() != QDataStream::Ok)
            return failed("The temporary file can't be written: " + replacement.cause());
    }
    if (!replacement.replace(fileName))
        return failed("The temporary file can't be written: " + replacement.cause());
    settingsDirty = false;

    const QString suffix = QStringLiteral(".ess");
    if (!fileName.endsWith(suffix))
        return true;
    QFile companion(fileName.chopped(suffix.size()) + QStringLiteral(".ppf"));
    if (companion.exists() && !companion.remove())
        return failed(companion.fileName().toStdString() +
                      " can't be removed: " + companion.errorString().toStdString());
    return true;
}

bool CSettingsFile::write(CVersionedStream& stream, IProgressController* progress)
{
    for (const bool customProperties : {false, true}) {
        if (customProperties && !writesCustomProperties)
            break;
        for (const SSettingsEntry& entry : entries)
            if (entry.isCustomProperty == customProperties && entry.entry->hasContent() &&
                !writeBlock(stream, progress, entry))
                return false;
    }
    return true;
}

bool CSettingsFile::writeBlock(CVersionedStream& stream, IProgressController* progress, const SSettingsEntry& entry)
{
    QIODevice& device = *stream.device();
    const CPlaceScope scope(placeAtWork().inBlock(entry.name));
    const auto failed = [&](const std::string& cause) {
        reportFailure(NLogTitle::settings, messageText(eMessageSettingsEntryNotWritten).toStdString() + cause,
                      eCauseTarget);
        return false;
    };
    stream.writeRawData(startMarker, markerLength);
    const qint64 lengthAt = device.pos();
    stream << qint32(0) << entry.identifier;
    if (!entry.entry->write(stream, progress))
        return failed("");
    const qint64 end = device.pos();
    stream.writeRawData(endMarker, markerLength);
    const qint64 length = end - lengthAt;
    if (length > std::numeric_limits<qint32>::max())
        return failed(" (more than a block can hold)");
    const bool hasLength = device.seek(lengthAt);
    stream << qint32(length);
    if (!hasLength || !device.seek(device.size()) || stream.status() != QDataStream::Ok)
        return failed(": " + device.errorString().toStdString());
    entry.entry->setModified(false);
    return true;
}

} // namespace NBrenmark
