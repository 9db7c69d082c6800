// brenmark values --query: the answers of a query of the deck's configuration, timestep by timestep.

#include "brenmark/values/queries.h"

#include "brenmark/nearest_word.h"
#include "brenmark/terminal.h"
#include "brenmark/values/members.h"
#include "brenmark/values/value_table.h"

#include "analysis/attributes/attribute_table.h"
#include "analysis/data_miner.h"
#include "config/config_manager.h"
#include "core/deck/simulation_settings.h"

#include <algorithm>
#include <optional>

namespace NBrenmark {

using namespace NAttributes;

/// By the name that its user gave it.
static std::unique_ptr<CQuery> requiredQuery(CDeckReader& reader, const SValuesOptions& options)
{
    NConfig::CConfigManager& configuration = *reader.deck().configuration;
    CDataMiners miners(configuration);
    try {
        miners.loadConfiguration(configuration);
    }
    catch (const NConfig::CConfigException& error) { // a key holds a value of another kind
        throw CFailure(eExitSource, utf8(options.deck) + ": its queries can't be read: " + withoutEnd(error.what()),
                       "Copy its configuration again from the archive.");
    }
    std::vector<std::string> names;
    std::string all;
    for (const auto& miner : miners.miners())
        for (const QList<CQuery*>& section : miner->queries().sections())
            for (const CQuery* const query : section) {
                if (utf8(query->id) == options.query)
                    return query->clone();
                names.push_back(utf8(query->id));
                all += (all.empty() ? "" : ", ") + oneLine(names.back());
            }
    const std::string nearest = nearestOf(options.query, names);
    throw CFailure(eExitUsage, "--query: the deck's data exports have no \"" + oneLine(options.query) + "\"",
                   !nearest.empty() ? "Did you mean " + oneLine(nearest) + "?"
                   : all.empty()    ? "They have no queries."
                                    : "They have " + all + ".");
}

/// \throws CFailure  the query asks for something that isn't calculated here
static void requireCalculated(const CQuery& query, const std::string& name)
{
    const char* const what = !query.isCalculated()                                      ? "its class"
                             : query.useAxis                                            ? "a value along an axis"
                             : query.reference1.type != 0 || query.reference2.type != 0 ? "a distance from a reference"
                                                                                        : nullptr;
    if (what != nullptr)
        throw CFailure(eExitUnsupported,
                       "--query: \"" + oneLine(name) + "\" (" + utf8(query.name()) + ") can't be calculated: " + what +
                           " isn't known here",
                       "Ask for the values of the attribute itself with --attribute.");
}

/// Values of all rows of the sources; a source without such values fails, for a part would pass for the whole.
static std::vector<double> columnOf(const std::vector<SValueSource>& sources, const CAttributeDescriptor& descriptor)
{
    const auto& attribute = static_cast<const CAttribute&>(descriptor);
    std::vector<double> values;
    for (const SValueSource& source : sources) {
        const std::size_t used = values.size();
        values.resize(used + source.rows.size() * attribute.width());
        if (!source.rows.empty() &&
            !source.column(attribute, {source.rows.data(), source.rows.size()}, nullptr, values.data() + used))
            throw CFailure(eExitSource,
                           "--query: the deck holds no values of \"" + oneLine(utf8(attribute.name)) + "\" for " +
                               oneLine(source.name),
                           "What they rest on isn't stored in this timestep.");
    }
    return values;
}

namespace {

/// Fills queries with the values of timesteps.
class CQueryReading
{
public:
    CQueryReading(CDeckReader& reader, CQuery& query) : reader(reader), query(query) {}

    /// Has the query collect a timestep.
    double collect(quint32 number);

private:
    EAttributeOwner ownerOf(const CAttributeTable& table) const;
    void bind(const CAttributeTable& table, EAttributeOwner owner);
    void keepRows(std::vector<SValueSource>& sources, const SSimulationFrame& frame, EAttributeOwner owner) const;

    CDeckReader& reader;
    CQuery& query;
};

EAttributeOwner CQueryReading::ownerOf(const CAttributeTable& table) const
{
    if (query.contactQuery)
        return eContactAttribute;
    for (const SOwnerWord& row : ownerWords)
        if (table.attribute(query.primaryAttribute, row.owner) != nullptr)
            return row.owner;
    throw CFailure(eExitSource, "--query: the deck has no attribute \"" + oneLine(utf8(query.primaryAttribute)) + "\"",
                   "The query asks for it. --list shows those of the deck.");
}

void CQueryReading::bind(const CAttributeTable& table, EAttributeOwner owner)
{
    std::vector<const CAttributeDescriptor*> served;
    for (const auto& attribute : table.all)
        if ((attribute->owners & owner) != 0)
            served.push_back(attribute.get());
    query.bindAttributes(served);
    const bool lacksFirst = query.primaryObject == nullptr;
    const bool lacksSecond = !query.secondaryAttribute.isEmpty() && query.secondaryObject == nullptr;
    if (lacksFirst || lacksSecond)
        throw CFailure(eExitSource,
                       "--query: the deck has no attribute \"" +
                           oneLine(utf8(lacksFirst ? query.primaryAttribute + ' ' + query.primaryComponent
                                                   : query.secondaryAttribute + ' ' + query.secondaryComponent)) +
                           "\" of that owner",
                       "The query asks for it. --list shows those of the deck.");
}

void CQueryReading::keepRows(std::vector<SValueSource>& sources, const SSimulationFrame& frame,
                             EAttributeOwner owner) const
{
    const auto keepNamed = [&sources](const QString& name) {
        sources.erase(std::remove_if(sources.begin(), sources.end(),
                                     [&name](const SValueSource& source) { return source.name != utf8(name); }),
                      sources.end());
        if (sources.empty())
            throw CFailure(eExitSource, "--query: the deck has no \"" + oneLine(utf8(name)) + "\"",
                           "The query is about it.");
    };
    if (!query.typeName.isEmpty())
        keepNamed(query.typeName);
    if (query.group.isEmpty())
        return;
    if (owner == eParticleAttribute)
        CSelectedParticles(reader, utf8(query.group)).keepMembers(sources, frame);
    else
        keepNamed(query.group);
}

double CQueryReading::collect(quint32 number)
{
    SSimulationFrame& frame = reader.timestep(number);
    compactPairs(frame.timestep);
    const CAttributeTable table = buildAttributeTable(frame.timestep);
    const EAttributeOwner owner = ownerOf(table);
    bind(table, owner);
    std::vector<SValueSource> sources = valueSources(frame, owner);
    keepRows(sources, frame, owner);

    SQueryValues values;
    values.time = frame.timestep.time;
    values.width = static_cast<const CAttribute*>(query.primaryObject)->width();
    values.primary = columnOf(sources, *query.primaryObject);
    if (query.secondaryObject != nullptr) {
        if (static_cast<const CAttribute*>(query.secondaryObject)->width() != 1)
            throw CFailure(eExitUnsupported, "--query: its second attribute has several numbers a row",
                           "A query is calculated with a component or a magnitude there.");
        values.secondary = columnOf(sources, *query.secondaryObject);
    }
    if (query.weighsRows()) {
        const CAttribute* const mass = table.attribute(QStringLiteral("Mass"), owner);
        const CAttribute* const position = table.attribute(QStringLiteral("Position"), owner);
        if (mass == nullptr || position == nullptr)
            throw CFailure(eExitUnsupported, "--query: a centre of gravity takes particles",
                           "The query is about something else.");
        values.mass = columnOf(sources, *mass);
        const std::vector<double> coordinates = columnOf(sources, *position);
        for (std::size_t i = 0; i + 2 < coordinates.size(); i += 3)
            values.position.emplace_back(coordinates[i], coordinates[i + 1], coordinates[i + 2]);
    }
    query.collect(values);
    query.primaryObject = query.secondaryObject = nullptr; // they go with the table
    return frame.timestep.time;
}

} // namespace

std::string queryText(CDeckReader& reader, const SValuesOptions& options, quint32 first, quint32 end)
{
    const std::unique_ptr<CQuery> query = requiredQuery(reader, options);
    requireCalculated(*query, options.query);
    CQueryReading reading(reader, *query);
    std::string text = "\"timestep\",\"time [s]\",\"number\"," + quotedCell(utf8(query->header())) + '\n';
    for (quint32 number = first; number < end; ++number) {
        const double time = reading.collect(number);
        std::vector<double> result;
        if (query->isOverTime() && number + 1 < end)
            continue;
        query->calculate(result); // without values there is no line
        for (std::size_t i = 0; i < result.size(); ++i)
            text += std::to_string(number) + ',' + exactNumber(time) + ',' + std::to_string(i) + ',' +
                    exactNumber(result[i]) + '\n';
    }
    return text;
}

} // namespace NBrenmark
