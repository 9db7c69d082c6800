// The texts that users read, as sources that hosts can translate.
#include "core/messages.h"

#include <QCoreApplication>

#include <array>

namespace NBrenmark {

namespace {

struct SMessageSource
{
    const char* context;
    const char* text;
};

// In the order of EMessage.
constexpr std::array<SMessageSource, eMessageCount> sources = {{
    {"Generic", QT_TRANSLATE_NOOP("Generic", "Could not initialise application.")},
    {"FileOperations", QT_TRANSLATE_NOOP("FileOperations", "Converting simulation %1 to %2.")},
    {"FileOperations", QT_TRANSLATE_NOOP("FileOperations", "Failed to convert simulation %1.")},
    {"FileOperations",
     QT_TRANSLATE_NOOP("FileOperations", "Failed to write new data (Reason: Could not write ess data)")},
    {"FileOperations",
     QT_TRANSLATE_NOOP("FileOperations", "Failed to write new data (Reason: Could not write configuration data)")},
    {"FileOperations", QT_TRANSLATE_NOOP("FileOperations", "Could not copy file\n    Source: %1\n    Destination %2")},
    {"Simulation Settings",
     QT_TRANSLATE_NOOP("Simulation Settings", "Corrupt Settings file (File marker does not match)")},
    {"Simulation Settings", QT_TRANSLATE_NOOP("Simulation Settings", "Could not write settings entry")},
    {"Simulation Settings",
     QT_TRANSLATE_NOOP("Simulation Settings",
                       "Detected Corruption in settings file (block start marker not found at expected position)\n"
                       "Will attempt to restart reading with next settings entry")},
    {"Simulation Settings",
     QT_TRANSLATE_NOOP("Simulation Settings", "Detected Corruption in settings file (unkown settings entry ID)\n"
                                              "Will attempt to restart reading with next settings entry")},
    {"Simulation Settings",
     QT_TRANSLATE_NOOP("Simulation Settings", "Could not read settings entry (see previous messages for reason)\n"
                                              "Will attempt to restart reading with next settings entry")},
    {"Simulation Settings",
     QT_TRANSLATE_NOOP("Simulation Settings", "Could not read settings entry (unknown reason)\n"
                                              "Will attempt to restart reading with next settings entry")},
    {"Simulation Settings",
     QT_TRANSLATE_NOOP("Simulation Settings",
                       "Detected Corruption in settings file (settings entry read wrong amount of data)\n"
                       "Will attempt to restart reading with next settings entry")},
    {"Simulation Settings",
     QT_TRANSLATE_NOOP("Simulation Settings",
                       "Detected Corruption in settings file (block end marker not found at expected position)\n"
                       "Will attempt to restart reading with next settings entry")},
    {"Simulation Settings", QT_TRANSLATE_NOOP("Simulation Settings", "Skipping obsolete data in settings file")},
    {"FileOperations", QT_TRANSLATE_NOOP("FileOperations", "Could not open file: %1")},
    {"FileOperations", QT_TRANSLATE_NOOP("FileOperations", "XML import failed, please check input deck for validity.")},
    {"FileOperations", QT_TRANSLATE_NOOP("FileOperations", "XML versions older than 2.4.0 are no longer supported.")},
}};

std::array<QString, eMessageCount>& texts()
{
    static std::array<QString, eMessageCount> translated;
    return translated;
}

} // namespace

void refreshMessages()
{
    for (size_t i = 0; i < sources.size(); ++i)
        texts()[i] = QCoreApplication::translate(sources[i].context, sources[i].text);
}

const QString& messageText(EMessage message)
{
    if (texts()[message].isNull())
        refreshMessages();
    return texts()[message];
}

} // namespace NBrenmark
