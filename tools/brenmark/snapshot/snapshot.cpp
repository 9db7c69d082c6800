// brenmark snapshot: a picture of a timestep, of either family, without a display.

#include "brenmark/commands.h"
#include "brenmark/deck_reader.h"
#include "brenmark/export/pieces.h"
#include "brenmark/json_text.h"
#include "brenmark/ledger.h"
#include "brenmark/plot_axis.h"
#include "brenmark/snapshot/pictures.h"
#include "brenmark/target_file.h"
#include "brenmark/terminal.h"
#include "brenmark/units_text.h"
#include "brenmark/values/value_reading.h"

#include <QFileInfo>

#include <algorithm>

namespace NBrenmark {

/// The timestep that is shown; the last one if none is named.
static quint32 shownTimestep(const CDeckReader& reader, const SSnapshotOptions& options)
{
    if (reader.timestepCount() == 0)
        throw CFailure(eExitSource, utf8(options.deck) + ": has no timestep", "There is nothing to show.");
    SValuesOptions range;
    range.deck = options.deck;
    range.allTimesteps = options.lastTimestep;
    range.firstTimestep = range.lastTimestep = options.timestep;
    return chosenTimesteps(reader, range).second - 1;
}

static void requireOneNumber(const std::vector<SPiece>& pieces, const std::string& attribute)
{
    for (const SPiece& piece : pieces)
        for (const SPieceArray& array : piece.arrays)
            if (piece.kind == "particles" && array.name == attribute && array.columns != 1)
                throw CFailure(eExitUsage, "\"" + oneLine(attribute) + "\" has several numbers a row",
                               "Ask for one of its components or its magnitude: \"" + oneLine(attribute) +
                                   " Magnitude\".");
}

EExitCode runSnapshot(const SSnapshotOptions& options)
{
    std::array<std::array<double, 3>, 3> axes{};
    if (!viewAxes(options.view, axes))
        throw CFailure(eExitUsage, "--view: there is no \"" + oneLine(options.view) + "\"",
                       "The views are x, y, z and iso.");
    CDeckReader reader(options.deck);
    const quint32 number = shownTimestep(reader, options);
    const std::vector<std::string> wanted{options.attribute, "Diameter"};
    readAlone(reader, attributesOfPieces(wanted), false);
    SSimulationFrame& frame = reader.timestep(number);
    CLeftOut leftOut;
    const std::vector<SPiece> pieces = piecesOf(frame, number, wanted, CChosenUnits(options.units), leftOut);
    requireOneNumber(pieces, options.attribute);
    SScene scene = sceneOf(pieces, options.attribute, axes, number, leftOut);
    const auto discs = std::count_if(scene.marks.begin(), scene.marks.end(), [](const SMark& m) { return m.isDisc; });
    scene.title = utf8(QFileInfo(options.deck).fileName()) + ", t = " + shortNumber(frame.timestep.time) + " s, " +
                  countText(static_cast<quint64>(discs), "particle");
    if (!options.svg.isEmpty()) {
        CTargetFile file(options.svg);
        file.write(sceneSvg(scene));
        file.commit();
    }
    if (!options.png.isEmpty())
        writePng(scene, options.png);
    const EExitCode code = holdsDamage(reader.messages()) ? eExitSource : eExitDone;
    Json files = Json::array();
    leftOut.print(utf8(options.deck));
    for (const QString& path : {options.svg, options.png})
        if (!path.isEmpty()) {
            files.push_back(utf8(path));
            if (!options.json)
                printResult(utf8(path) + ": shows timestep " + std::to_string(number) + " of " + utf8(options.deck) +
                            '\n');
        }
    if (options.json)
        printJson({{"path", utf8(options.deck)},
                   {"files", files},
                   {"timestep", number},
                   {"timeSeconds", frame.timestep.time},
                   {"particles", discs},
                   {"leftOut", leftOut.json()},
                   {"messages", jsonMessages(reader.messages())},
                   {"code", code},
                   {"error", nullptr}});
    flushResult();
    printLedger(reader.messages(), eWithoutUpgrades);
    return code;
}

} // namespace NBrenmark
