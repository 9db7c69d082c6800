#pragma once
// The settings file beside a deck: a header and a block for each entry. A block says its own
// length, so that one that is damaged or unknown costs only itself.

#include "core/messages.h"
#include "core/read_write.h"

#include <QString>
#include <string>
#include <vector>

class QIODevice;

namespace NBrenmark {

/// What a block of the file holds.
struct SSettingsEntry
{
    qint32 identifier;               ///< 1 and up; the number that names the entry in the file
    std::string name;                ///< as messages name it
    ISimulationSettingsEntry* entry; ///< not owned
    bool isCustomProperty;           ///< written only if the custom properties are
};

class CSettingsFile : public IReadWrite
{
public:
    CSettingsFile() = default;
    explicit CSettingsFile(std::vector<SSettingsEntry> entries);

    /// Reads a file into the entries, which are emptied before. A file that isn't there is no failure: the entries
    /// stay empty. Nor are damaged blocks, whose entries stay empty; each is reported.
    bool loadSettings(const QString& fileName, IProgressController* progress);
    /// Writes the file if an entry is modified, the file that was read had damage, or force says so. It takes its
    /// place in the background (config/file_replacer.h). Custom properties that are in an old companion file of
    /// their own live in this file from then on: the companion is removed.
    bool saveSettings(const QString& fileName, IProgressController* progress, bool force, bool writeCustomProperties);
    /// Empties every entry, notifying listeners if notify is true.
    void clearSettings(bool notify);

    /// All blocks up to the end of the stream, which is after the header. False after a cancel alone.
    bool read(CVersionedStream& stream, IProgressController* progress) override;
    bool write(CVersionedStream& stream, IProgressController* progress) override;

    /// Of the file that was read last; 0 if there was none.
    quint32 readVersion() const { return lastVersion; }
    qint32 readEdition() const { return lastEdition; }
    /// Of the blocks of that file those that were left out.
    int damagedBlockCount() const { return damagedBlocks; }
    /// The file must be written at the next save even if no entry is modified.
    bool isDirty() const { return settingsDirty; }

protected:
    /// \param list  in the order in which they are cleared; they are written in the same order, those that are no
    ///              custom properties first
    void setEntries(std::vector<SSettingsEntry> list);

private:
    bool readBlock(CVersionedStream& stream, IProgressController* progress);
    bool writeBlock(CVersionedStream& stream, IProgressController* progress, const SSettingsEntry& entry);
    const SSettingsEntry* entryOf(qint32 identifier) const;
    bool blockFailed(const QIODevice& device, const SSettingsEntry* entry, qint64 position, EMessage message,
                     const std::string& detail = std::string());

    std::vector<SSettingsEntry> entries;
    bool settingsDirty = true;
    bool writesCustomProperties = true;
    int damagedBlocks = 0;
    quint32 lastVersion = 0;
    qint32 lastEdition = 0;
};

} // namespace NBrenmark
