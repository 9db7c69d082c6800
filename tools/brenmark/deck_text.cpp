#include "brenmark/deck_text.h"

#include "brenmark/deck_reader.h"

#include "config/config_manager.h"
#include "core/deck/simulation_settings.h"
#include "core/plain_file.h"
#include "io/text/settings.h"
#include "io/text/text_writer.h"

#include <QFile>

#include <vector>

namespace NBrenmark {

/// The companion file as an array of bytes: its content isn't interpreted, but it goes along.
static void companionText(CTextOutput& out, const QString& path)
{
    QFile file(path);
    if (!file.exists())
        return;
    if (const std::string cause = openPlainFile(file); !cause.empty())
        throw CFailure(eExitSource, utf8(path) + ": can't be opened: " + cause, "Check the file's permissions.");
    out.bytes("ptf", file);
    if (file.error() != QFile::NoError)
        throw CFailure(eExitSource, utf8(path) + ": can't be read: " + utf8(file.errorString()),
                       "Copy the file again from the archive.");
}

std::string modelRoot(quint32 firstTimestep)
{
    return firstTimestep == 0 ? "creator" : "creator@" + std::to_string(firstTimestep);
}

std::string timestepRoot(quint32 number) { return "timestep/" + std::to_string(number); }

void deckText(const CSimulation& deck, ITextSink& sink, bool fullArrays)
{
    CTextOutput out(sink, "deck", fullArrays);
    const IFileFormatManager& manager = deck.ioManager.active();
    out.stored("format", headOf(deck.filePath).familyName());
    out.stored("firstVersion", versionText(manager.firstVersion));
    out.stored("lastVersion", versionText(manager.lastVersion));
    out.stored("edition", manager.edition);
    out.value("timesteps", deck.ioManager.timestepCount());
    out.group("settings", [&] {
        CSimulationSettingsAndData& settings = *deck.settings;
        writeSelections(out, settings.selectionMap());
        writeFields(out, settings.fieldManager());
        writePropertyDefinitions(out, settings.propertyManagers());
    });
    out.group("configuration", [&] { writeConfigurationText(out, *deck.configuration); });
    out.group("companion", [&] { companionText(out, deck.baseName + NDeckFile::companionSuffix); });
}

void modelText(const CSimulation& deck, ITextSink& sink, const std::string& root, bool fullArrays)
{
    CTextWriter writer(sink, root, fullArrays);
    deck.currentFrame->creator.write(writer);
}

void timestepText(const CSimulation& deck, ITextSink& sink, const std::string& root, bool fullArrays)
{
    const STimestepIndexEntry& entry = deck.index[deck.currentFrame->timestep.timestepIndex];
    CTextOutput out(sink, root, fullArrays);
    out.group("index", [&] {
        out.value("time", entry.time);
        out.value("isFull", entry.isFull);
        out.stored("segment", entry.segment);
        out.stored("offset", entry.offset);
    });
    CTextWriter writer(sink, root, fullArrays);
    deck.currentFrame->timestep.write(writer);
}

} // namespace NBrenmark
