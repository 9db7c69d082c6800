// brenmark values --query: the answers of a query of the deck's configuration or of a selection, timestep by timestep.

#include "brenmark/values/queries.h"

#include "brenmark/terminal.h"
#include "brenmark/values/chosen_units.h"
#include "brenmark/values/members.h"
#include "brenmark/values/query_search.h"
#include "brenmark/values/value_reading.h"

#include "analysis/attributes/attribute_table.h"
#include "analysis/attributes/derived_attributes.h"
#include "analysis/query_kinds.h"
#include "model/geometry/geometry_group.h"

#include <algorithm>
#include <optional>

namespace NBrenmark {

using namespace NAttributes;

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
    /// Lines of the answer, or of those of each element of the region; none without values.
    std::string lines(const std::string& front) const;

private:
    EAttributeOwner ownerOf(const CAttributeTable& table) const;
    void bind(const CBindable& bindable, EAttributeOwner owner);
    void keepRows(std::vector<SValueSource>& sources, SSimulationFrame& frame, EAttributeOwner owner);
    void addNeeds(SQueryValues& values, const std::vector<SValueSource>& sources, const CBindable& bindable,
                  SSimulationFrame& frame);
    void convertRanges();
    const CSelectedRows* dividedRegion(SSimulationFrame& frame) const;
    void collectByElement(const SQueryValues& values, const CSelectedRows& region,
                          const std::vector<SValueSource>& sources, SSimulationFrame& frame);
    std::vector<double> answerOf(const CQuery& asked) const;
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
    std::vector<std::unique_ptr<CQuery>> byElement; ///< the same query for each element; empty for one answer
    std::string headText;                           ///< with its units once a timestep is bound
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
    if (const CSelectedRows* const region = dividedRegion(frame))
        collectByElement(values, *region, sources, frame);
    else
        query->collect(values);
    query->primaryObject = query->secondaryObject = nullptr; // they go with the table
    const SUnit* const timeUnit = units.of(eTimeQuantity);
    return timeUnit == nullptr ? frame.timestep.time : frame.timestep.time * timeUnit->toDisplayFactor;
}

/// A region of several elements has an answer for each, unless the query wants one for all.
const CSelectedRows* CQueryReading::dividedRegion(SSimulationFrame& frame) const
{
    if (query->collate)
        return nullptr;
    for (const std::optional<CSelectedRows>* const region : {&selected, &group})
        if (region->has_value() && (*region)->elementCount(frame) > 1)
            return &**region;
    return nullptr;
}

void CQueryReading::collectByElement(const SQueryValues& values, const CSelectedRows& region,
                                     const std::vector<SValueSource>& sources, SSimulationFrame& frame)
{
    constexpr int mostElements = 100000;
    const int count = region.elementCount(frame);
    if (count > mostElements)
        throw CFailure(eExitUnsupported, "--query: its region has " + std::to_string(count) + " elements",
                       "Answers are given for up to " + std::to_string(mostElements) +
                           ". Ask for one of them: --selection \"NAME:1\".");
    std::vector<std::vector<std::size_t>> rowsOf(static_cast<std::size_t>(count));
    const std::vector<int> elements = region.elementsOf(sources, frame);
    for (std::size_t row = 0; row < elements.size(); ++row)
        rowsOf.at(static_cast<std::size_t>(elements[row])).push_back(row);
    while (byElement.size() < rowsOf.size())
        byElement.push_back(query->clone());
    for (std::size_t element = 0; element < rowsOf.size(); ++element) {
        SQueryValues members = values.ofRows(rowsOf[element]);
        members.volume = region.elementVolume(static_cast<int>(element));
        byElement[element]->collect(members);
    }
}

std::vector<double> CQueryReading::answerOf(const CQuery& asked) const
{
    std::vector<double> result;
    if (!asked.calculate(result))
        return {};
    if (const auto quantity = asked.ownQuantity())
        if (const SUnit* const unit = units.of(*quantity))
            for (double& number : result)
                number = number * unit->toDisplayFactor + unit->toDisplayOffset;
    return result;
}

std::string linesOf(const std::vector<double>& answer, const std::string& front)
{
    std::string text;
    for (std::size_t i = 0; i < answer.size(); ++i)
        text += front + std::to_string(i) + ',' + exactNumber(answer[i]) + '\n';
    return text;
}

std::string CQueryReading::lines(const std::string& front) const
{
    if (byElement.empty())
        return linesOf(answerOf(*query), front);
    std::string text;
    for (std::size_t element = 0; element < byElement.size(); ++element)
        text += linesOf(answerOf(*byElement[element]), front + std::to_string(element + 1) + ',');
    return text;
}

std::string CQueryReading::heads() const
{
    return "\"timestep\"," + quotedCell(units.withUnit("time", eTimeQuantity)) +
           (byElement.empty() ? "" : ",\"element\"") + ",\"number\"," + quotedCell(headText) + '\n';
}

} // namespace

std::string queryText(CDeckReader& reader, const SValuesOptions& options, quint32 first, quint32 end)
{
    CQueryReading reading(reader, options);
    std::string text;
    for (quint32 number = first; number < end; ++number) {
        const double time = reading.collect(number);
        if (!reading.asked().isOverTime() || number + 1 == end)
            text += reading.lines(std::to_string(number) + ',' + exactNumber(time) + ',');
    }
    return reading.heads() + text;
}

} // namespace NBrenmark
