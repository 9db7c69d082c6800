// brenmark law: what the materials of a deck do in contact, and what a contact model makes of a state.

#include "brenmark/commands.h"
#include "brenmark/failure.h"
#include "brenmark/law/curve.h"
#include "brenmark/law/plot.h"
#include "brenmark/law/states.h"
#include "brenmark/terminal.h"

#include "core/log_titles.h"
#include "core/plain_file.h"

#include <QFile>
#include <QSaveFile>

#include <algorithm>
#include <cstdio>
#include <unistd.h>

namespace NBrenmark {

static QByteArray statesText(const QString& path)
{
    QFile file(path);
    const bool isInput = path == QLatin1String("-");
    if (isInput ? !file.open(STDIN_FILENO, QIODevice::ReadOnly) : !openPlainFile(file).empty())
        throw CFailure(eExitSource, utf8(path) + ": can't be opened: " + utf8(file.errorString()),
                       "Check the path and the permissions of the file.");
    QByteArray text = file.readAll();
    if (file.error() != QFileDevice::NoError)
        throw CFailure(eExitSource, utf8(path) + ": can't be read: " + utf8(file.errorString()), "Check the disk.");
    return text;
}

/// Line and column, counted from 1, of a byte.
static std::string positionIn(const QByteArray& text, std::size_t byte)
{
    const QByteArray before = text.left(static_cast<int>(std::min<std::size_t>(byte, 1u << 30)));
    return "line " + std::to_string(before.count('\n') + 1) + ", column " +
           std::to_string(std::max(before.size() - before.lastIndexOf('\n') - 1, 1));
}

static EExitCode runStates(const QString& path)
{
    const QByteArray text = statesText(path);
    Json states;
    try {
        states = Json::parse(text.begin(), text.end());
    }
    catch (const Json::parse_error& error) {
        const std::string what = error.what();
        throw CFailure(eExitUsage,
                       (path == QLatin1String("-") ? std::string("standard input") : utf8(path)) + ": " +
                           positionIn(text, error.byte) + ": isn't JSON",
                       withoutEnd(what.substr(what.find("; ") == std::string::npos ? 0 : what.find("; ") + 2)) + ".");
    }
    printJson(resultsOf(states));
    return eExitDone;
}

static void save(const QString& path, const std::string& text)
{
    QSaveFile file(path);
    const auto size = static_cast<qint64>(text.size());
    if (!file.open(QIODevice::WriteOnly) || file.write(text.data(), size) != size || !file.commit())
        throw CFailure(eExitTarget, utf8(path) + ": can't be written: " + utf8(file.errorString()),
                       adviceForWriting(utf8(file.errorString())));
}

/// \throws CFailure  the read of the deck left a model out
static void requireWholeChains(const Ledger& messages, const SLawOptions& options)
{
    for (const SLogRecord& message : messages)
        if (options.only.empty() && message.title == NLogTitle::customProperties.text && message.level == eError)
            throw CFailure(eExitSource,
                           utf8(options.deck) + ": the deck's " + oneLine(message.place.object) +
                               " is left out: it clashes with custom properties",
                           "Its force would be missing. --only MODEL takes one of the others.");
}

EExitCode runLaw(const SLawOptions& options)
{
    if (!options.states.isEmpty())
        return runStates(options.states);
    SCurveOptions wanted;
    wanted.first = options.first;
    wanted.second = options.second;
    wanted.only = options.only;
    wanted.from = options.from;
    wanted.to = options.to;
    wanted.count = options.count;
    wanted.speed = options.speed;
    wanted.unloads = options.unloads;
    CDeckReader reader(options.deck);
    if (reader.timestepCount() > 0)
        reader.timestep(reader.timestepCount() - 1);
    requireWholeChains(reader.messages(), options);
    const SCurve curve = curveOf(reader.deck().currentFrame->creator, wanted);
    const std::size_t column = columnNamed(curve, options.show);
    if (!options.csv.isEmpty())
        save(options.csv, csvText(curve));
    if (!options.svg.isEmpty())
        save(options.svg, svgPlot(curve, column));
    printResult(terminalPlot(curve, column, errorColumns()) + '\n' + tableText(curve));
    flushResult();
    printLedger(reader.messages(), eWithoutUpgrades);
    return eExitDone;
}

} // namespace NBrenmark
