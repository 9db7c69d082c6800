#include "brenmark/values/value_reading.h"

#include "brenmark/nearest_word.h"
#include "brenmark/terminal.h"
#include "brenmark/units_text.h"

#include "analysis/attributes/attribute_table.h"

#include <algorithm>
#include <tuple>

namespace NBrenmark {

using namespace NAttributes;

/// Rows of which the values are held at a time.
static constexpr std::size_t rowsAtOnce = 8192;

std::string ownerWord(EAttributeOwner owner)
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

std::pair<quint32, quint32> chosenTimesteps(const CDeckReader& reader, const SValuesOptions& options)
{
    const quint32 count = reader.timestepCount();
    if (options.allTimesteps)
        return {0, count};
    if (options.lastTimestep >= count)
        throw CFailure(eExitUsage, utf8(options.deck) + ": has no timestep " + std::to_string(options.lastTimestep),
                       "It has " + std::to_string(count) + ", counted from 0.");
    return {options.firstTimestep, options.lastTimestep + 1};
}

/// Of particles, and made of contacts.
static bool countsContacts(const CAttribute& attribute)
{
    return attribute.arrays.ofContacts != 0 && (attribute.owners & eContactAttribute) == 0;
}

void readAlone(CDeckReader& reader, const std::vector<std::string>& attributes, bool ofParticles)
{
    SSaveOptions& options = reader.deck().readOptions;
    options.wantedParticleFields = eIds;                                // a slot without one is free
    options.wantedContactFields = eContactEnds | eContactNormalOverlap; // and so is a row that doesn't overlap
    bool areParticlesEnough =
        ofParticles && reader.format() == eFormatHdf5; // the legacy family has the time at the end
    const CAttributeTable table = buildAttributeTable(reader.deck().currentFrame->timestep);
    for (const std::string& name : attributes) {
        const CAttribute* const particle = table.attribute(QString::fromStdString(name), eParticleAttribute);
        const CAttribute* const contact = table.attribute(QString::fromStdString(name), eContactAttribute);
        if (particle != nullptr)
            options.wantedParticleFields |= particle->arrays.ofParticles;
        if (contact != nullptr)
            options.wantedContactFields |= contact->arrays.ofContacts;
        areParticlesEnough = areParticlesEnough && particle != nullptr && !countsContacts(*particle);
    }
    options.extent = areParticlesEnough ? eReadParticles : eReadWhole;
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

std::vector<std::string> columnHeads(const CAttribute& attribute, const CChosenUnits& units)
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

CValueReading::CValueReading(CDeckReader& reader, const SValuesOptions& options)
    : reader(reader), options(options), units(options.units)
{
    std::tie(first, end) = chosenTimesteps(reader, options);
    loadFirst();
    const CAttributeTable table = buildAttributeTable(reader.deck().currentFrame->timestep);
    askedOwner = chosenOwner(table, options);
    headTexts = columnHeads(*table.attribute(QString::fromStdString(options.attribute), askedOwner), units);
    if (options.selection.empty())
        return;
    if (askedOwner == eBondAttribute || askedOwner == eSimulationAttribute)
        throw CFailure(eExitUsage, "--selection takes values of what has a place",
                       "Bonds and the simulation have none.");
    selected.emplace(reader, options.selection);
}

/// The first timestep that can be read, which shows what attributes there are.
void CValueReading::loadFirst()
{
    bool isLoaded = first == end;
    for (quint32 number = first; number < end && !isLoaded; ++number)
        isLoaded = readableTimestep(reader, number, unread) != nullptr;
    if (isLoaded)
        return;
    unread.print(utf8(options.deck));
    throw CFailure(eExitSource, utf8(options.deck) + ": has no timestep that can be read",
                   "Copy the deck again from the archive, with all its files.");
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
    SSimulationFrame& frame = reader.loadedTimestep(number);
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
    unread = CLeftOut();
    for (quint32 number = first; number < end; ++number)
        if (readableTimestep(reader, number, unread) != nullptr)
            readTimestep(number, visit);
    requireAny();
}

void CValueReading::requireAny() const
{
    if (rowsRead > 0 && rowsRead == rowsWithout)
        throw CFailure(eExitSource,
                       utf8(options.deck) + ": holds no values of \"" + oneLine(options.attribute) + "\" for its " +
                           countText(rowsRead, "row"),
                       "What they rest on isn't stored in these timesteps.");
}

void CValueReading::printMissing() const
{
    unread.print(utf8(options.deck));
    if (rowsWithout > 0)
        printError("brenmark: " + countText(rowsWithout, "row") + " of " + std::to_string(rowsRead) +
                   " left out: the deck holds no values for them\n");
}

} // namespace NBrenmark
