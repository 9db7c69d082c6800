// brenmark values: the values of an attribute at the timesteps of a deck, as a table, in sum, or as a histogram.

#include "brenmark/commands.h"
#include "brenmark/deck_reader.h"
#include "brenmark/json_text.h"
#include "brenmark/ledger.h"
#include "brenmark/target_file.h"
#include "brenmark/terminal.h"
#include "brenmark/units_text.h"
#include "brenmark/values/chosen_units.h"
#include "brenmark/values/queries.h"
#include "brenmark/values/value_reading.h"

#include "analysis/attributes/attribute_table.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <tuple>

namespace NBrenmark {

using namespace NAttributes;

// ---------------------------------------------------------------- forms of output

static void writeTable(CValueReading& reading, const CValueTable::Out& out)
{
    CValueTable table(reading.timeHead(), reading.heads(), out);
    reading.forEachBlock([&table](const SValueBlock& block) { table.add(block); });
    table.finish();
}

/// \param write  hands its text to what it is given, CValueTable::Out
template <class TWrite>
static void writeTo(const QString& path, const TWrite& write)
{
    if (path.isEmpty()) {
        write(CValueTable::Out(printResult));
        return;
    }
    CTargetFile file(path);
    write([&file](const std::string& text) { file.write(text); });
    file.commit();
}

static std::vector<SValueSummary> summaryOf(CValueReading& reading)
{
    std::vector<SValueSummary> summaries(reading.heads().size());
    reading.forEachBlock([&summaries](const SValueBlock& block) {
        for (std::size_t i = 0; i < block.count * block.columns; ++i)
            summaries[i % block.columns].add(block.values[i]);
    });
    return summaries;
}

static Json jsonSummary(const std::string& head, const SValueSummary& summary)
{
    const auto orNull = [&summary](double value) {
        return summary.count > 0 && std::isfinite(value) ? Json(value) : Json();
    };
    return {{"name", head},
            {"count", summary.count},
            {"notNumbers", summary.notNumbers},
            {"minimum", orNull(summary.minimum)},
            {"maximum", orNull(summary.maximum)},
            {"mean", orNull(summary.mean())},
            {"sum", orNull(summary.sum())}};
}

static Json jsonIntervals(const SHistogram& histogram)
{
    Json intervals = Json::array();
    for (std::size_t i = 0; i < histogram.counts.size(); ++i)
        intervals.push_back(
            {{"from", histogram.edge(i)}, {"to", histogram.edge(i + 1)}, {"count", histogram.counts[i]}});
    return intervals;
}

/// Damage that the deck was read with shows in the status, whatever it hit.
static EExitCode codeOf(const CDeckReader& reader, bool isWhole)
{
    return !isWhole || holdsDamage(reader.messages()) ? eExitSource : eExitDone;
}

static void printColumns(const Json& columns, const CValueReading& reading, const CDeckReader& reader,
                         const SValuesOptions& options)
{
    printJson({{"path", utf8(options.deck)},
               {"attribute", options.attribute},
               {"owner", ownerWord(reading.owner())},
               {"columns", columns},
               {"leftOut", reading.leftOut().json()},
               {"messages", jsonMessages(reader.messages())},
               {"code", codeOf(reader, reading.leftOut().empty())},
               {"error", nullptr}});
}

static void printSummary(CValueReading& reading, const CDeckReader& reader, const SValuesOptions& options)
{
    const std::vector<SValueSummary> summaries = summaryOf(reading);
    if (options.json) {
        Json columns = Json::array();
        for (std::size_t i = 0; i < summaries.size(); ++i)
            columns.push_back(jsonSummary(reading.heads()[i], summaries[i]));
        printColumns(columns, reading, reader, options);
        return;
    }
    for (std::size_t i = 0; i < summaries.size(); ++i) {
        const SValueSummary& summary = summaries[i];
        std::string text = oneLine(reading.heads()[i]) + "\n  count    " + std::to_string(summary.count) + '\n';
        if (summary.count > 0)
            text += "  minimum  " + exactNumber(summary.minimum) + "\n  maximum  " + exactNumber(summary.maximum) +
                    "\n  mean     " + exactNumber(summary.mean()) + "\n  sum      " + exactNumber(summary.sum()) + '\n';
        if (summary.notNumbers > 0)
            text += "  and      " + countText(summary.notNumbers, "value") + " that are no numbers\n";
        printResult(text);
    }
}

static void printHistogram(CValueReading& reading, const CDeckReader& reader, const SValuesOptions& options)
{
    if (reading.heads().size() != 1)
        throw CFailure(eExitUsage, "--histogram takes one number a row, and this attribute has several",
                       "Ask for one of its components or its magnitude.");
    const SValueSummary summary = summaryOf(reading).front();
    if (!std::isfinite(summary.maximum - summary.minimum))
        throw CFailure(eExitSource, utf8(options.deck) + ": some values are infinite, or too large for intervals",
                       "--summary shows the extremes.");
    SHistogram histogram(summary.minimum, summary.maximum, options.intervals);
    reading.forEachBlock([&histogram](const SValueBlock& block) {
        for (std::size_t i = 0; i < block.count; ++i)
            histogram.add(block.values[i]);
    });
    const std::string& head = reading.heads().front();
    std::string number = countText(summary.count, "value");
    if (summary.notNumbers > 0)
        number += ", and " + std::to_string(summary.notNumbers) + " that are no numbers";
    if (!options.csv.isEmpty()) {
        CTargetFile file(options.csv);
        file.write(histogram.csv(head));
        file.commit();
    }
    if (!options.svg.isEmpty()) {
        CTargetFile file(options.svg);
        file.write(histogram.svg(number, head));
        file.commit();
    }
    if (!options.json) {
        printResult(histogram.text(oneLine(head) + ", " + number, errorColumns()));
        return;
    }
    Json column = jsonSummary(head, summary);
    column["intervals"] = jsonIntervals(histogram);
    printColumns(Json::array({column}), reading, reader, options);
}

static void printList(CDeckReader& reader, const SValuesOptions& options)
{
    const CChosenUnits units(options.units);
    if (reader.timestepCount() > 0)
        reader.timestep(reader.timestepCount() - 1);
    const CAttributeTable table = buildAttributeTable(reader.deck().currentFrame->timestep);
    for (const SOwnerWord& row : ownerWords) {
        std::string text;
        for (const auto& attribute : table.all)
            if ((attribute->owners & row.owner) != 0)
                text += "  " + oneLine(units.withUnit(utf8(attribute->name), attribute->unitsType)) + '\n';
        if (!text.empty() && (options.owner.empty() || options.owner == row.word))
            printResult(std::string(row.word) + '\n' + text);
    }
}

EExitCode runValues(const SValuesOptions& options)
{
    CDeckReader reader(options.deck);
    bool isWhole = true;
    if (options.list) {
        printList(reader, options);
    }
    else if (!options.query.empty()) {
        const auto [first, end] = chosenTimesteps(reader, options);
        const std::string text = queryText(reader, options, first, end);
        writeTo(options.output, [&text](const CValueTable::Out& out) { out(text); });
    }
    else {
        if (options.selection.empty()) // which may look at any value
            readAlone(reader, {options.attribute}, mayBeOfParticles(options.owner));
        CValueReading reading(reader, options);
        if (options.summary)
            printSummary(reading, reader, options);
        else if (options.intervals > 0)
            printHistogram(reading, reader, options);
        else
            writeTo(options.output, [&reading](const CValueTable::Out& out) { writeTable(reading, out); });
        reading.printMissing();
        isWhole = reading.leftOut().empty();
    }
    flushResult();
    printLedger(reader.messages(), eWithoutUpgrades);
    return codeOf(reader, isWhole);
}

} // namespace NBrenmark
