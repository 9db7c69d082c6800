// brenmark view: an XDMF file beside a deck of the HDF5 family, which names the deck's own datasets.

#include "brenmark/view/view.h"

#include "brenmark/argument_values.h"
#include "brenmark/commands.h"
#include "brenmark/deck_reader.h"
#include "brenmark/json_text.h"
#include "brenmark/ledger.h"
#include "brenmark/target_file.h"
#include "brenmark/terminal.h"
#include "brenmark/units_text.h"
#include "brenmark/view/deck_heads.h"
#include "brenmark/view/moved_file.h"
#include "brenmark/view/xdmf_text.h"

#include "core/deck/simulation_settings.h"

#include <QFile>
#include <QFileInfo>

namespace NBrenmark {

/// Where an earlier view has its mark.
static constexpr qint64 bytesWithMark = 200;

static bool isView(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) && file.read(bytesWithMark).contains(xdmfMark);
}

static void requireReplaceable(const QString& path, bool isOurs)
{
    if (QFileInfo::exists(path) && !isOurs)
        throw CFailure(eExitTarget, utf8(path) + " exists already, and isn't of an earlier view",
                       "Move it away, or replace it with --force.");
}

namespace {

/// Names of the files of a view.
struct SViewFiles
{
    explicit SViewFiles(const QString& deck)
        : view(stripDeckSuffix(deck) + QLatin1String(".xmf")), moved(stripDeckSuffix(deck) + QLatin1String("_view.h5"))
    {}

    QString view;
    QString moved;
};

} // namespace

/// A timestep as text. \return empty, with the reason in the ledger of what is left out, if it can't be read
static std::string textOfStep(CDeckHeads& heads, quint32 number, CChosenValues& values,
                              std::vector<SMovedVertices>& moved, CLeftOut& leftOut)
{
    const auto lost = [&](const std::string& cause) {
        leftOut.add("all of it: " + cause, number);
        moved.clear();
        return std::string();
    };
    try {
        SViewStep step = heads.step(number, moved);
        values.keepIn(step);
        return xdmfStep(step);
    }
    catch (const H5::Exception& error) {
        return lost(error.getDetailMsg());
    }
    catch (const std::bad_alloc&) {
        throw;
    }
    catch (const std::exception& error) {
        return lost(error.what());
    }
}

SViewResult writeView(CDeckReader& reader, const QString& deck, bool force, const std::vector<std::string>& values)
{
    const SViewFiles files(deck);
    const std::string movedName = QFileInfo(files.moved).fileName().toStdString();
    if (!isXdmfPath(movedName))
        throw CFailure(eExitTarget,
                       utf8(deck) + ": has a name that XDMF can't hold: a colon, a bar, or a blank at an end",
                       "Give the deck another name, all of its files alike.");
    const bool wasView = force || isView(files.view);
    requireReplaceable(files.view, wasView);
    requireReplaceable(files.moved, wasView);

    SViewResult result;
    CTargetFile xml(files.view);
    CMovedFile extra(files.moved);
    const TimestepIndex& index = reader.index();
    CChosenValues chosen(values);
    CDeckHeads heads(deck, index, reader.deck().settings->propertyManagers(), movedName, chosen, result.leftOut);
    xml.write(xdmfHead());
    for (quint32 number = 0; number < index.size(); ++number) {
        if (index[number].offset == 0)
            continue; // a gap, which the reader has reported
        std::vector<SMovedVertices> moved;
        const std::string text = textOfStep(heads, number, chosen, moved, result.leftOut);
        if (text.empty()) {
            result.damaged = true;
            continue;
        }
        try {
            extra.add(moved);
        }
        catch (const H5::Exception& error) {
            throw CFailure(eExitTarget, utf8(files.moved) + ": can't be written: " + error.getDetailMsg(),
                           adviceForWriting(error.getDetailMsg()));
        }
        catch (const std::runtime_error& error) {
            throw CFailure(eExitTarget, error.what(), adviceForWriting(error.what()));
        }
        xml.write(text);
        ++result.timesteps;
    }
    if (result.timesteps == 0)
        throw CFailure(eExitSource, utf8(deck) + ": has no timestep that can be shown",
                       "Copy the deck again from the archive, with all its files.");
    chosen.requireAll();
    xml.write(xdmfEnd());
    if (extra.finish())
        result.moved = files.moved;
    else if (wasView)
        QFile::remove(files.moved); // of an earlier view; nothing names it any more
    xml.commit();
    result.path = files.view;
    return result;
}

EExitCode runView(const SViewOptions& options)
{
    CDeckReader reader(options.deck);
    if (reader.format() != eFormatHdf5)
        throw CFailure(eExitUnsupported, utf8(options.deck) + ": is a legacy deck, whose arrays no view can name",
                       "Convert it first: brenmark convert. Or write its timesteps as files: brenmark export.");
    const std::vector<std::string> values = namesFrom(options.values);
    if (values.empty() && !options.values.empty())
        throw CFailure(eExitUsage, "--values names nothing", "A view without --values shows all names.");
    const SViewResult result = writeView(reader, options.deck, options.force, values);
    const EExitCode code = result.damaged || holdsDamage(reader.messages()) ? eExitSource : eExitDone;
    result.leftOut.print(utf8(options.deck));
    if (options.json)
        printJson({{"path", utf8(options.deck)},
                   {"view", utf8(result.path)},
                   {"movedVertices", result.moved.isEmpty() ? Json() : Json(utf8(result.moved))},
                   {"timesteps", result.timesteps},
                   {"leftOut", result.leftOut.json()},
                   {"messages", jsonMessages(reader.messages())},
                   {"code", code},
                   {"error", nullptr}});
    else
        printResult(utf8(result.path) + ": shows " + countText(result.timesteps, "timestep") + " of " +
                    utf8(options.deck) + '\n');
    flushResult();
    printLedger(reader.messages(), eWithoutUpgrades);
    return code;
}

} // namespace NBrenmark
