#pragma once
// The texts that a user gets to read, in the language of the moment.

#include <QString>

namespace NBrenmark {

enum EMessage
{
    eMessageNotInitialised, ///< context "Generic"
    // Context "FileOperations".
    eMessageConverting,       ///< %1 input path, %2 output path
    eMessageConversionFailed, ///< %1 input path
    eMessageSettingsNotWritten,
    eMessageConfigurationNotWritten,
    eMessageCopyFailed, ///< %1 source, %2 destination
    // Context "Simulation Settings": what befell a settings file.
    eMessageSettingsMarkerWrong,
    eMessageSettingsEntryNotWritten,
    eMessageSettingsNoBlockStart,
    eMessageSettingsUnknownEntry,
    eMessageSettingsEntryRefused,
    eMessageSettingsEntryThrew,
    eMessageSettingsWrongLength,
    eMessageSettingsNoBlockEnd,
    eMessageSettingsObsolete,
    // Context "FileOperations": documents.
    eMessageXmlNotOpened, ///< %1 path
    eMessageXmlImportFailed,
    eMessageXmlTooOld,
    eMessageCount
};

/// Translates the whole table anew. Each conversion begins with it.
void refreshMessages();

/// A text as the last refresh translated it.
const QString& messageText(EMessage message);

} // namespace NBrenmark
