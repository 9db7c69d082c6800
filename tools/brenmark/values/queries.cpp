// brenmark values --query: the answers of a query of the deck's configuration or of a selection, timestep by timestep.

#include "brenmark/values/queries.h"

#include "brenmark/nearest_word.h"
#include "brenmark/terminal.h"
#include "brenmark/values/chosen_units.h"
#include "brenmark/values/members.h"
#include "brenmark/values/value_reading.h"

#include "analysis/attributes/attribute_table.h"
#include "analysis/attributes/derived_attributes.h"
#include "analysis/data_miner.h"
#include "analysis/query_kinds.h"
#include "analysis/selection.h"
#include "config/config_manager.h"
#include "core/deck/simulation_settings.h"
#include "model/geometry/geometry_group.h"

#include <algorithm>
#include <optional>

namespace NBrenmark {

using namespace NAttributes;

// ---------------------------------------------------------------- by name

namespace {

/// Looks a query up by what it may be called, and knows what others there are.
class CQuerySearch
{
public:
    explicit CQuerySearch(const std::string& wanted) : wanted(wanted) {}

    /// \param section  in which it is
    void look(const QString& section, const CQuery& query)
    {
        const std::string title = utf8(query.id.isEmpty() ? query.header() : query.id);
        const std::string path = utf8(section) + '/' + title;
        if (title == wanted || path == wanted)
            found.push_back(&query);
        names.push_back(title);
        all += (all.empty() ? "" : ", ") + oneLine(path);
    }
    void look(const QueryMap& map)
    {
        for (auto section = map.sections().begin(); section != map.sections().end(); ++section)
            for (const CQuery* const query : section.value())
                look(section.key(), *query);
    }
    /// A copy; null if there is none of the name. \throws CFailure  there are several
    std::unique_ptr<CQuery> result() const
    {
        if (found.size() > 1)
            throw CFailure(eExitUsage,
                           "--query: " + std::to_string(found.size()) + " queries are named \"" + oneLine(wanted) +
                               "\"",
                           "Put the section in front, with a slash: there are " + all + ".");
        return found.empty() ? nullptr : found.front()->clone();
    }
    [[noreturn]] void fail() const
    {
        const std::string nearest = nearestOf(wanted, names);
        throw CFailure(eExitUsage, "--query: the deck has no \"" + oneLine(wanted) + "\"",
                       !nearest.empty() ? "Did you mean " + oneLine(nearest) + "?"
                       : all.empty()    ? "It has no queries."
                                        : "It has " + all + ".");
    }

private:
    const std::string& wanted;
    std::vector<const CQuery*> found; ///< not owned
    std::vector<std::string> names;
    std::string all;
};

} // namespace

/// Of the selection that is asked about, or else of the deck's data exports. What a selection asks is about its own
/// members, and what a sensor asks about its region, whatever group it was saved with.
static std::unique_ptr<CQuery> requiredQuery(CDeckReader& reader, const std::string& name,
                                             const std::optional<CSelectedRows>& selected)
{
    CQuerySearch search(name);
    if (selected) {
        search.look(selected->selection().queries);
        if (std::unique_ptr<CQuery> query = search.result()) {
            query->group.clear();
            return query;
        }
    }
    NConfig::CConfigManager& configuration = *reader.deck().configuration;
    CDataMiners miners(configuration);
    try {
        miners.loadConfiguration(configuration);
    }
    catch (const NConfig::CConfigException& error) { // a key holds a value of another kind
        throw CFailure(eExitSource,
                       utf8(reader.deck().filePath) + ": its queries can't be read: " + withoutEnd(error.what()),
                       "Copy its configuration again from the archive.");
    }
    for (const auto& miner : miners.miners())
        search.look(miner->queries());
    std::unique_ptr<CQuery> query = search.result();
    if (query == nullptr)
        search.fail();
    return query;
}

[[noreturn]] static void failFor(const CQuery& query, const std::string& what)
{
    throw CFailure(eExitUnsupported,
                   "--query: " + oneLine(utf8(query.header())) + " can't be calculated: " + what + " isn't known here",
                   "Ask for the values of the attribute itself with --attribute.");
}

// ---------------------------------------------------------------- the values of a timestep

/// Values of all rows of the sources; a source without such values fails, for a part would pass for the whole.
static std::vector<double> columnOf(const std::vector<SValueSource>& sources, const CAttribute& attribute,
                                    const SUnit* unit = nullptr)
{
    std::vector<double> values;
    for (const SValueSource& source : sources) {
        const std::size_t used = values.size();
        values.resize(used + source.rows.size() * attribute.width());
        if (!source.rows.empty() &&
            !source.column(attribute, {source.rows.data(), source.rows.size()}, unit, values.data() + used))
            throw CFailure(eExitSource,
                           "--query: the deck holds no values of \"" + oneLine(utf8(attribute.name)) + "\" for " +
                               oneLine(source.name),
                           "What they rest on isn't stored in this timestep.");
    }
    return values;
}

namespace {

/// What of an owner a query can be bound to: the attributes of the table, and the components of quaternions.
class CBindable
{
public:
    CBindable(const CAttributeTable& table, EAttributeOwner owner)
    {
        for (const auto& attribute : table.all) {
            if ((attribute->owners & owner) == 0)
                continue;
            all.push_back(attribute.get());
            for (quint32 i = 0; attribute->valueKind == eQuaternionValue && attribute->parent == nullptr && i < 4; ++i)
                all.push_back(
                    components.emplace_back(std::make_unique<CAttributeQuaternionComponent>(*attribute, i)).get());
        }
    }
    const CAttribute* named(const char* name) const
    {
        const auto found = std::find_if(all.begin(), all.end(), [name](const CAttributeDescriptor* attribute) {
            return attribute->name == QLatin1String(name);
        });
        return found == all.end() ? nullptr : static_cast<const CAttribute*>(*found);
    }

    std::vector<const CAttributeDescriptor*> all;

private:
    std::vector<std::unique_ptr<CAttribute>> components;
};

/// Fills a query with the values of timesteps.
class CQueryReading
{
public:
    CQueryReading(CDeckReader& reader, const SValuesOptions& options);

    /// Has the query collect a timestep. \return its time in the chosen unit
    double collect(quint32 number);
    std::string heads() const;
    const CQuery& asked() const { return *query; }
    /// \return false  there is none
    bool answer(std::vector<double>& result) const;

private:
    EAttributeOwner ownerOf(const CAttributeTable& table) const;
    void bind(const CBindable& bindable, EAttributeOwner owner);
    void keepRows(std::vector<SValueSource>& sources, SSimulationFrame& frame, EAttributeOwner owner);
    void addNeeds(SQueryValues& values, const std::vector<SValueSource>& sources, const CBindable& bindable,
                  SSimulationFrame& frame);
    void convertRanges();
    const CAttribute& needed(const CBindable& bindable, const char* name) const;
    const CAttribute* secondary() const { return static_cast<const CAttribute*>(query->secondaryObject); }
    const CAttribute& primary() const { return *static_cast<const CAttribute*>(query->primaryObject); }
    /// Of an attribute's values as they are collected; null for base units.
    const SUnit* unitOf(const CAttribute& attribute) const
    {
        return query->ownQuantity() ? nullptr : units.of(attribute.unitsType);
    }

    CDeckReader& reader;
    const SValuesOptions& options;
    CChosenUnits units;
    std::optional<CSelectedRows> selected;
    std::optional<CSelectedRows> group; ///< of the query, where that is a selection
    std::unique_ptr<CQuery> query;
    std::string headText; ///< with its units once a timestep is bound
    bool areRangesConverted = false;
};

CQueryReading::CQueryReading(CDeckReader& reader, const SValuesOptions& options)
    : reader(reader), options(options), units(options.units)
{
    if (!options.selection.empty())
        selected.emplace(reader, options.selection);
    query = requiredQuery(reader, options.query, selected);
    if (!query->ownAttribute().isEmpty() && !query->useRange) { // what it is saved with narrows down nothing then
        query->primaryAttribute = query->ownAttribute();
        query->primaryComponent.clear();
    }
    if (const char* const obstacle = query->obstacle())
        failFor(*query, obstacle);
    if (query->hasReferences())
        printError(
            "brenmark: --query: the references of the query aren't used: this attribute isn't measured from one\n");
    headText = utf8(query->header());
}

/// The one that is named, that of the class or of the query's word for it, or the first that the attribute serves.
EAttributeOwner CQueryReading::ownerOf(const CAttributeTable& table) const
{
    const auto ownerNamed = [](const std::string& name) {
        return std::find_if(ownerWords.begin(), ownerWords.end(),
                            [&name](const SOwnerWord& row) { return name == row.word; });
    };
    if (!options.owner.empty()) {
        if (const auto named = ownerNamed(options.owner); named != ownerWords.end())
            return named->owner;
        throw CFailure(eExitUsage, "--owner: there is no \"" + oneLine(options.owner) + "\"",
                       "The owners are particle, contact, bond, collision, geometry and simulation.");
    }
    if ((query->needs() & eNeedsPressure) != 0)
        return eGeometryAttribute;
    if ((query->needs() & eNeedsMass) != 0)
        return eParticleAttribute;
    if (query->contactQuery)
        return eContactAttribute;
    if (const auto* const two = dynamic_cast<const CTwoAttribQuery*>(query.get()))
        if (const auto named = ownerNamed(utf8(two->objectType.toLower())); named != ownerWords.end())
            return named->owner;
    for (const SOwnerWord& row : ownerWords)
        if (table.attribute(query->primaryAttribute, row.owner) != nullptr)
            return row.owner;
    throw CFailure(eExitSource, "--query: the deck has no attribute \"" + oneLine(utf8(query->primaryAttribute)) + "\"",
                   "The query asks for it. --list shows those of the deck.");
}

void CQueryReading::bind(const CBindable& bindable, EAttributeOwner owner)
{
    query->bindAttributes(bindable.all);
    const bool lacksFirst = query->primaryObject == nullptr;
    const bool lacksSecond = (query->needs() & eNeedsSecondary) != 0 && query->secondaryObject == nullptr;
    if (lacksFirst || lacksSecond)
        throw CFailure(eExitSource,
                       "--query: the deck has no attribute \"" +
                           oneLine(utf8((lacksFirst ? query->primaryAttribute + ' ' + query->primaryComponent
                                                    : query->secondaryAttribute + ' ' + query->secondaryComponent)
                                            .trimmed())) +
                           "\" of the owner " + ownerWord(owner),
                       "The query asks for it. --list shows those of the deck.");
    if (query->useAxis && primary().width() != 3 && query->ownAttribute().isEmpty())
        failFor(*query, "a number along an axis");
    if (lacksSecond || (query->needs() & eNeedsSecondary) == 0)
        query->secondaryObject = nullptr;
    else if (secondary()->width() != 1)
        failFor(*query, "a second attribute with several numbers a row");
}

void CQueryReading::keepRows(std::vector<SValueSource>& sources, SSimulationFrame& frame, EAttributeOwner owner)
{
    const auto keepNamed = [&sources](const QString& name) {
        sources.erase(std::remove_if(sources.begin(), sources.end(),
                                     [&name](const SValueSource& source) { return source.name != utf8(name); }),
                      sources.end());
        if (sources.empty())
            throw CFailure(eExitSource, "--query: the deck has no \"" + oneLine(utf8(name)) + "\"",
                           "The query is about it.");
    };
    const auto isNamed = [&sources](const QString& name) {
        return std::any_of(sources.begin(), sources.end(),
                           [&name](const SValueSource& source) { return source.name == utf8(name); });
    };
    if (selected)
        selected->keepMembers(sources, frame);
    const bool isSame = utf8(query->group) == options.selection;
    if (!query->group.isEmpty() && !isSame && (owner == eParticleAttribute || !isNamed(query->group))) {
        if (!group)
            group.emplace(reader, utf8(query->group));
        group->keepMembers(sources, frame);
    }
    else if (!query->group.isEmpty() && !isSame)
        keepNamed(query->group);
    if (!query->typeName.isEmpty())
        keepNamed(query->typeName);
}

const CAttribute& CQueryReading::needed(const CBindable& bindable, const char* name) const
{
    if (const CAttribute* const attribute = bindable.named(name))
        return *attribute;
    failFor(*query, "what it takes of that owner");
}

template <class TValue>
std::vector<TValue> triplesOf(const std::vector<double>& numbers)
{
    std::vector<TValue> triples;
    triples.reserve(numbers.size() / 3);
    for (std::size_t i = 0; i + 2 < numbers.size(); i += 3)
        triples.emplace_back(numbers[i], numbers[i + 1], numbers[i + 2]);
    return triples;
}

std::vector<double> areasOf(const std::vector<SValueSource>& sources)
{
    std::vector<double> areas;
    for (const SValueSource& source : sources) {
        const auto& ofGroup = std::get<const CGeometryGroup*>(source.owner)->triangleAreas;
        for (const quint32 row : source.rows)
            areas.push_back(row < ofGroup.size() ? ofGroup[row] : 0.0);
    }
    return areas;
}

void CQueryReading::addNeeds(SQueryValues& values, const std::vector<SValueSource>& sources, const CBindable& bindable,
                             SSimulationFrame& frame)
{
    const quint32 needs = query->needs();
    if ((needs & eNeedsMass) != 0)
        values.mass = columnOf(sources, needed(bindable, "Mass"));
    if ((needs & eNeedsPosition) != 0)
        values.position = triplesOf<C3DPoint>(columnOf(sources, needed(bindable, "Position")));
    if ((needs & eNeedsVelocity) != 0)
        values.velocity = triplesOf<C3DVector>(columnOf(sources, needed(bindable, "Velocity")));
    if ((needs & eNeedsPressure) != 0) {
        values.force = columnOf(sources, needed(bindable, "Compressive Force"));
        if (!sources.empty() && !std::holds_alternative<const CGeometryGroup*>(sources.front().owner))
            failFor(*query, "the area of that owner");
        values.area = areasOf(sources);
    }
    if ((needs & eNeedsVolume) == 0)
        return;
    if (selected && group)
        failFor(*query, "what two regions have in common");
    const CDomain& domain = frame.creator.domain;
    const C3DVector whole = domain.max - domain.min;
    values.volume = selected ? selected->volume(frame) : group ? group->volume(frame) : whole.x * whole.y * whole.z;
    if (!(values.volume > 0.0))
        throw CFailure(eExitSource, "--query: the domain of the deck has no volume",
                       "Ask for the density in a selection with --selection.");
}

/// Ranges are saved in base units, and held against values in those of the answer.
void CQueryReading::convertRanges()
{
    if (areRangesConverted)
        return;
    areRangesConverted = true;
    const auto convert = [this](const CAttribute* attribute, double& least, double& greatest) {
        const SUnit* const unit = attribute == nullptr ? nullptr : unitOf(*attribute);
        for (double* const end : {&least, &greatest})
            if (unit != nullptr)
                *end = *end * unit->toDisplayFactor + unit->toDisplayOffset;
    };
    convert(&primary(), query->minimum, query->maximum);
    convert(secondary(), query->secondaryMinimum, query->secondaryMaximum);
    if (const SUnit* const unit = unitOf(primary()); unit != nullptr && primary().unitsType == eLengthQuantity)
        for (double* const coordinate : {&query->axisStart.x, &query->axisStart.y, &query->axisStart.z,
                                         &query->axisEnd.x, &query->axisEnd.y, &query->axisEnd.z})
            *coordinate *= unit->toDisplayFactor;
    const auto head = [this](const CAttribute& attribute) {
        return units.withUnit(utf8(attribute.name), attribute.unitsType);
    };
    headText = units.withUnit(utf8(query->header()), query->ownQuantity().value_or(primary().unitsType));
    if (dynamic_cast<const CTwoAttribQuery*>(query.get()) != nullptr)
        headText = utf8(query->name()) + ' ' + head(primary()) + ", " + head(*secondary());
}

double CQueryReading::collect(quint32 number)
{
    SSimulationFrame& frame = reader.timestep(number);
    compactPairs(frame.timestep);
    const CAttributeTable table = buildAttributeTable(frame.timestep);
    const EAttributeOwner owner = ownerOf(table);
    const CBindable bindable(table, owner);
    bind(bindable, owner);
    convertRanges();
    std::vector<SValueSource> sources = valueSources(frame, owner);
    keepRows(sources, frame, owner);

    SQueryValues values;
    values.time = frame.timestep.time;
    values.width = primary().width();
    const QStringList places{QStringLiteral("Position"), QStringLiteral("Node 1"), QStringLiteral("Centre of Mass")};
    values.arePlaces = places.contains(query->primaryAttribute);
    values.primary = columnOf(sources, primary(), unitOf(primary()));
    if (secondary() != nullptr)
        values.secondary = columnOf(sources, *secondary(), unitOf(*secondary()));
    addNeeds(values, sources, bindable, frame);
    query->collect(values);
    query->primaryObject = query->secondaryObject = nullptr; // they go with the table
    const SUnit* const timeUnit = units.of(eTimeQuantity);
    return timeUnit == nullptr ? frame.timestep.time : frame.timestep.time * timeUnit->toDisplayFactor;
}

bool CQueryReading::answer(std::vector<double>& result) const
{
    if (!query->calculate(result))
        return false;
    if (const auto quantity = query->ownQuantity())
        if (const SUnit* const unit = units.of(*quantity))
            for (double& number : result)
                number = number * unit->toDisplayFactor + unit->toDisplayOffset;
    return true;
}

std::string CQueryReading::heads() const
{
    return "\"timestep\"," + quotedCell(units.withUnit("time", eTimeQuantity)) + ",\"number\"," + quotedCell(headText) +
           '\n';
}

} // namespace

std::string queryText(CDeckReader& reader, const SValuesOptions& options, quint32 first, quint32 end)
{
    CQueryReading reading(reader, options);
    std::string text;
    for (quint32 number = first; number < end; ++number) {
        const double time = reading.collect(number);
        std::vector<double> result;
        if (reading.asked().isOverTime() && number + 1 < end)
            continue;
        reading.answer(result); // without values there is no line
        for (std::size_t i = 0; i < result.size(); ++i)
            text += std::to_string(number) + ',' + exactNumber(time) + ',' + std::to_string(i) + ',' +
                    exactNumber(result[i]) + '\n';
    }
    return reading.heads() + text;
}

} // namespace NBrenmark
