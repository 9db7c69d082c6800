// brenmark values: the values of an attribute at the timesteps of a deck, as a table, in sum, or as a histogram.

#include "brenmark/commands.h"
#include "brenmark/deck_reader.h"
#include "brenmark/json_text.h"
#include "brenmark/ledger.h"
#include "brenmark/nearest_word.h"
#include "brenmark/target_file.h"
#include "brenmark/terminal.h"
#include "brenmark/units_text.h"
#include "brenmark/values/chosen_units.h"
#include "brenmark/values/members.h"
#include "brenmark/values/queries.h"
#include "brenmark/values/value_table.h"

#include "analysis/attributes/attribute_table.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <tuple>

namespace NBrenmark {

using namespace NAttributes;

/// Rows of which the values are held at a time.
static constexpr std::size_t rowsAtOnce = 8192;

static std::string ownerWord(EAttributeOwner owner)
{
    return std::find_if(ownerWords.begin(), ownerWords.end(), [owner](const SOwnerWord& w) { return w.owner == owner; })
        ->word;
}

/// "Did you mean ...?" or what there is.
static std::string adviceFor(const std::string& word, const std::vector<std::string>& words,
                             const std::string& otherwise)
{
    const std::string nearest = nearestOf(word, words);
    return nearest.empty() ? otherwise : "Did you mean " + oneLine(nearest) + "?";
}

// ---------------------------------------------------------------- what is asked for

/// The first timestep, and the one after the last.
static std::pair<quint32, quint32> chosenTimesteps(const CDeckReader& reader, const SValuesOptions& options)
{
    const quint32 count = reader.timestepCount();
    if (options.allTimesteps)
        return {0, count};
    if (options.lastTimestep >= count)
        throw CFailure(eExitUsage, utf8(options.deck) + ": has no timestep " + std::to_string(options.lastTimestep),
                       "It has " + std::to_string(count) + ", counted from 0.");
    return {options.firstTimestep, options.lastTimestep + 1};
}

/// The owner that is named, or the first that the attribute serves.
static EAttributeOwner chosenOwner(const CAttributeTable& table, const SValuesOptions& options)
{
    std::vector<std::string> words, names;
    for (const SOwnerWord& row : ownerWords) {
        words.emplace_back(row.word);
        if (!options.owner.empty() && options.owner != row.word)
            continue;
        if (table.attribute(QString::fromStdString(options.attribute), row.owner) != nullptr)
            return row.owner;
        for (const auto& attribute : table.all)
            if ((attribute->owners & row.owner) != 0)
                names.push_back(utf8(attribute->name));
    }
    if (!options.owner.empty() && std::find(words.begin(), words.end(), options.owner) == words.end())
        throw CFailure(eExitUsage, "--owner: there is no \"" + oneLine(options.owner) + "\"",
                       adviceFor(options.owner, words,
                                 "The owners are particle, contact, bond, collision, geometry and simulation."));
    throw CFailure(eExitUsage,
                   "there is no attribute \"" + oneLine(options.attribute) + "\"" +
                       (options.owner.empty() ? "" : " of the owner " + options.owner),
                   adviceFor(options.attribute, names, "--list shows the attributes of a deck."));
}

/// The heads of an attribute's columns, with their units.
static std::vector<std::string> columnHeads(const CAttribute& attribute, const CChosenUnits& units)
{
    const std::string name = utf8(attribute.name);
    const std::string whole = attribute.parent != nullptr ? utf8(attribute.parent->name) : name;
    std::vector<std::string> heads;
    for (quint32 i = 0; i < attribute.width(); ++i) {
        std::string head = attribute.width() == 1                    ? name
                           : attribute.valueKind == eVectorValue     ? whole + ' ' + "XYZ"[i]
                           : attribute.valueKind == eQuaternionValue ? whole + ' ' + "WXYZ"[i]
                                                                     : whole + ' ' + std::to_string(i + 1);
        heads.push_back(units.withUnit(head, attribute.unitsType));
    }
    return heads;
}

namespace {

/// The values that a command asks for, timestep by timestep.
class CValueReading
{
public:
    CValueReading(CDeckReader& reader, const SValuesOptions& options);

    const std::vector<std::string>& heads() const { return headTexts; }
    std::string timeHead() const { return units.withUnit("time", eTimeQuantity); }
    EAttributeOwner owner() const { return askedOwner; }
    /// Hands over every value, in blocks.
    /// \throws CFailure  the deck holds none of the values, though it has rows for them
    void forEachBlock(const std::function<void(const SValueBlock&)>& visit);
    /// Reports rows without values.
    void printMissing() const;

private:
    void readTimestep(quint32 number, const std::function<void(const SValueBlock&)>& visit);
    void requireSource(const std::vector<SValueSource>& sources) const;

    CDeckReader& reader;
    const SValuesOptions& options;
    CChosenUnits units;
    quint32 first = 0;
    quint32 end = 0;
    EAttributeOwner askedOwner = eParticleAttribute;
    std::vector<std::string> headTexts;
    std::optional<CSelectedParticles> selected;
    quint64 rowsRead = 0;
    quint64 rowsWithout = 0;
};

CValueReading::CValueReading(CDeckReader& reader, const SValuesOptions& options)
    : reader(reader), options(options), units(options.units)
{
    std::tie(first, end) = chosenTimesteps(reader, options);
    if (first < end)
        reader.timestep(first);
    const CAttributeTable table = buildAttributeTable(reader.deck().currentFrame->timestep);
    askedOwner = chosenOwner(table, options);
    headTexts = columnHeads(*table.attribute(QString::fromStdString(options.attribute), askedOwner), units);
    if (options.selection.empty())
        return;
    if (askedOwner != eParticleAttribute)
        throw CFailure(eExitUsage, "--selection takes values of particles", "Use --owner particle, or leave it out.");
    selected.emplace(reader, options.selection);
}

void CValueReading::requireSource(const std::vector<SValueSource>& sources) const
{
    if (options.type.empty() || std::any_of(sources.begin(), sources.end(),
                                            [this](const SValueSource& source) { return source.name == options.type; }))
        return;
    std::vector<std::string> names;
    std::string all;
    for (const SValueSource& source : sources) {
        names.push_back(source.name);
        all += (all.empty() ? "" : ", ") + oneLine(source.name);
    }
    throw CFailure(eExitUsage,
                   "--type: there is no \"" + oneLine(options.type) + "\" among those of the owner " +
                       ownerWord(askedOwner),
                   adviceFor(options.type, names, all.empty() ? "There are none at all." : "There are " + all + "."));
}

void CValueReading::readTimestep(quint32 number, const std::function<void(const SValueBlock&)>& visit)
{
    SSimulationFrame& frame = reader.timestep(number);
    compactPairs(frame.timestep);
    const CAttributeTable table = buildAttributeTable(frame.timestep);
    const CAttribute& attribute = *table.attribute(QString::fromStdString(options.attribute), askedOwner);
    std::vector<SValueSource> sources = valueSources(frame, askedOwner);
    requireSource(sources);
    if (selected)
        selected->keepMembers(sources, frame);
    const SUnit* const unit = units.of(attribute.unitsType);
    const SUnit* const timeUnit = units.of(eTimeQuantity);
    const double time = timeUnit == nullptr ? frame.timestep.time : frame.timestep.time * timeUnit->toDisplayFactor;
    const std::size_t columns = attribute.width();
    std::vector<double> values(rowsAtOnce * columns);
    for (const SValueSource& source : sources) {
        if (!options.type.empty() && source.name != options.type)
            continue;
        for (std::size_t i = 0; i < source.rows.size(); i += rowsAtOnce) {
            const SAttributeRows rows{source.rows.data() + i, std::min(rowsAtOnce, source.rows.size() - i)};
            rowsRead += rows.count;
            if (source.column(attribute, rows, unit, values.data()))
                visit({number, time, source, rows.rows, rows.count, values.data(), columns});
            else
                rowsWithout += rows.count;
        }
    }
}

void CValueReading::forEachBlock(const std::function<void(const SValueBlock&)>& visit)
{
    rowsRead = rowsWithout = 0;
    for (quint32 number = first; number < end; ++number)
        readTimestep(number, visit);
    if (rowsRead > 0 && rowsRead == rowsWithout)
        throw CFailure(eExitSource,
                       utf8(options.deck) + ": holds no values of \"" + oneLine(options.attribute) + "\" for its " +
                           countText(rowsRead, "row"),
                       "What they rest on isn't stored in these timesteps.");
}

void CValueReading::printMissing() const
{
    if (rowsWithout > 0)
        printError("brenmark: " + countText(rowsWithout, "row") + " of " + std::to_string(rowsRead) +
                   " left out: the deck holds no values for them\n");
}

} // namespace

// ---------------------------------------------------------------- forms of output

static void writeTable(CValueReading& reading, const CValueTable::Out& out)
{
    CValueTable table(reading.timeHead(), reading.heads(), out);
    reading.forEachBlock([&table](const SValueBlock& block) { table.add(block); });
    table.finish();
}

static void writeTable(CValueReading& reading, const QString& path)
{
    if (path.isEmpty()) {
        writeTable(reading, CValueTable::Out(printResult));
        return;
    }
    CTargetFile file(path);
    writeTable(reading, [&file](const std::string& text) { file.write(text); });
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

/// Damage that the deck was read with shows in the status, whatever it hit.
static EExitCode codeOf(const CDeckReader& reader) { return holdsDamage(reader.messages()) ? eExitSource : eExitDone; }

static void printJsonSummary(CValueReading& reading, const CDeckReader& reader, const SValuesOptions& options)
{
    const std::vector<SValueSummary> summaries = summaryOf(reading);
    Json columns = Json::array();
    for (std::size_t i = 0; i < summaries.size(); ++i)
        columns.push_back(jsonSummary(reading.heads()[i], summaries[i]));
    printJson({{"path", utf8(options.deck)},
               {"attribute", options.attribute},
               {"owner", ownerWord(reading.owner())},
               {"columns", columns},
               {"messages", jsonMessages(reader.messages())},
               {"code", codeOf(reader)},
               {"error", nullptr}});
}

static void printSummary(CValueReading& reading)
{
    const std::vector<SValueSummary> summaries = summaryOf(reading);
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

static void printHistogram(CValueReading& reading, const SValuesOptions& options)
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
    const std::string number = countText(summary.count, "value");
    if (!options.svg.isEmpty()) {
        CTargetFile file(options.svg);
        file.write(histogram.svg(number, head));
        file.commit();
    }
    printResult(histogram.text(oneLine(head) + ", " + number, errorColumns()));
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
    if (options.list) {
        printList(reader, options);
    }
    else if (!options.query.empty()) {
        const auto [first, end] = chosenTimesteps(reader, options);
        printResult(queryText(reader, options, first, end));
    }
    else {
        CValueReading reading(reader, options);
        if (options.json)
            printJsonSummary(reading, reader, options);
        else if (options.summary)
            printSummary(reading);
        else if (options.intervals > 0)
            printHistogram(reading, options);
        else
            writeTable(reading, options.output);
        reading.printMissing();
    }
    flushResult();
    printLedger(reader.messages(), eWithoutUpgrades);
    return codeOf(reader);
}

} // namespace NBrenmark
