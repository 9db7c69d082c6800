// brenmark export: the timesteps of a deck of either family as files of other programs.

#include "brenmark/argument_values.h"
#include "brenmark/commands.h"
#include "brenmark/deck_reader.h"
#include "brenmark/export/writers.h"
#include "brenmark/json_text.h"
#include "brenmark/ledger.h"
#include "brenmark/nearest_word.h"
#include "brenmark/terminal.h"
#include "brenmark/units_text.h"
#include "brenmark/values/value_reading.h"

#include <QDir>
#include <algorithm>

namespace NBrenmark {

std::unique_ptr<IExportWriter> exportWriter(const std::string& format, const QString& folder)
{
    return format == "vtp"       ? vtkWriter(folder, false)
           : format == "vtu"     ? vtkWriter(folder, true)
           : format == "csv"     ? csvWriter(folder)
           : format == "xyz"     ? xyzWriter(folder)
           : format == "ensight" ? ensightWriter(folder)
                                 : nullptr;
}

static void requireFormat(const std::string& format)
{
    const std::vector<std::string> formats{"vtp", "vtu", "csv", "xyz", "ensight"};
    if (std::find(formats.begin(), formats.end(), format) != formats.end())
        return;
    const std::string nearest = nearestOf(format, formats);
    throw CFailure(eExitUsage, "--format: there is no \"" + oneLine(format) + "\"",
                   nearest.empty() ? "The formats are vtp, vtu, csv, xyz and ensight."
                                   : "Did you mean " + nearest + "?");
}

/// \throws CFailure  the folder can't be made, or holds something that isn't to be replaced
static QString madeFolder(const QString& path, bool force)
{
    const QDir folder(path);
    if (!force && folder.exists() && !folder.isEmpty())
        throw CFailure(eExitTarget, utf8(path) + ": isn't empty",
                       "Choose another folder, or write into this one with --force.");
    if (!QDir().mkpath(path))
        throw CFailure(eExitTarget, utf8(path) + ": can't be made", "Check the path and its permissions.");
    return path + QLatin1Char('/');
}

EExitCode runExport(const SExportOptions& options)
{
    requireFormat(options.format);
    CDeckReader reader(options.deck);
    SValuesOptions range;
    range.deck = options.deck;
    range.allTimesteps = options.allTimesteps;
    range.firstTimestep = options.firstTimestep;
    range.lastTimestep = options.lastTimestep;
    const auto [first, end] = chosenTimesteps(reader, range);
    const CChosenUnits units(options.units);
    const std::vector<std::string> wanted = namesFrom(options.attributes);
    const SUnit* const timeUnit = units.of(eTimeQuantity);
    readAlone(reader, attributesOfPieces(wanted), false);

    const std::unique_ptr<IExportWriter> writer =
        exportWriter(options.format, madeFolder(options.output, options.force));
    CLeftOut leftOut;
    bool isDamaged = false;
    quint32 count = 0;
    for (quint32 number = first; number < end; ++number) {
        SSimulationFrame* const frame = readableTimestep(reader, number, leftOut);
        if (frame == nullptr) {
            isDamaged = true;
            continue;
        }
        SExportStep step;
        step.number = number;
        step.time = timeUnit == nullptr ? frame->timestep.time : frame->timestep.time * timeUnit->toDisplayFactor;
        step.timeUnit = units.nameOf(eTimeQuantity);
        step.pieces = piecesOf(*frame, number, wanted, units, leftOut);
        if (step.pieces.empty())
            leftOut.add("nothing to show", number);
        writer->write(step);
        ++count;
    }
    if (count == 0 && isDamaged) {
        leftOut.print(utf8(options.deck));
        throw CFailure(eExitSource, utf8(options.deck) + ": has no timestep that can be read",
                       "Copy the deck again from the archive, with all its files.");
    }
    writer->finish();
    const EExitCode code = isDamaged || holdsDamage(reader.messages()) ? eExitSource : eExitDone;
    const std::string mainFile = utf8(options.output) + '/' + writer->mainFile();
    leftOut.print(utf8(options.deck));
    if (options.json)
        printJson({{"path", utf8(options.deck)},
                   {"format", options.format},
                   {"file", mainFile},
                   {"timesteps", count},
                   {"leftOut", leftOut.json()},
                   {"messages", jsonMessages(reader.messages())},
                   {"code", code},
                   {"error", nullptr}});
    else
        printResult(mainFile + ": shows " + countText(count, "timestep") + " of " + utf8(options.deck) + '\n');
    flushResult();
    printLedger(reader.messages(), eWithoutUpgrades);
    return code;
}

} // namespace NBrenmark
