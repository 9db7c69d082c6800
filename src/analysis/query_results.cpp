// What queries make of the values that they collected.
#include "analysis/query_kinds.h"

#include "visitors/attribute_retrieval.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

namespace NBrenmark {

// ---------------------------------------------------------------- attributes and values

/// The attribute of a name with its component. A single number has none, whatever a query was saved with.
static const NAttributes::CAttributeDescriptor*
attributeNamed(const std::vector<const NAttributes::CAttributeDescriptor*>& attributes, const QString& name,
               const QString& component)
{
    const auto named = [&attributes](const QString& whole) {
        const auto found = std::find_if(attributes.begin(), attributes.end(),
                                        [&whole](const auto* attribute) { return attribute->name == whole; });
        return found == attributes.end() ? nullptr : *found;
    };
    const auto* const whole = named(component.isEmpty() ? name : name + QLatin1Char(' ') + component);
    if (whole != nullptr)
        return whole;
    const auto* const alone = named(name);
    const bool isNumber =
        alone != nullptr && alone->elementCount == 1 &&
        (alone->valueKind == NAttributes::eScalarValue || alone->valueKind == NAttributes::eIntegerValue);
    return isNumber ? alone : nullptr;
}

void CQuery::bindAttributes(const std::vector<const NAttributes::CAttributeDescriptor*>& attributes)
{
    primaryObject = attributeNamed(attributes, primaryAttribute, primaryComponent);
    secondaryObject = attributeNamed(attributes, secondaryAttribute, secondaryComponent);
}

static const char* const referenceObstacle = "a distance from a reference";

/// Whether an attribute depends on where a place is measured from.
static bool isOfPlaces(const QString& attribute)
{
    const QStringList ofPlaces{QStringLiteral("Position"), QStringLiteral("Node 1"), QStringLiteral("Centre of Mass"),
                               QStringLiteral("Potential Energy"), QStringLiteral("Total Energy")};
    return ofPlaces.contains(attribute);
}

const char* CQuery::obstacle() const
{
    const bool secondOfPlaces = (needs() & eNeedsSecondary) != 0 && isOfPlaces(secondaryAttribute);
    if (hasReferences() && (isOfPlaces(primaryAttribute) || secondOfPlaces))
        return referenceObstacle;
    if (!useAxis)
        return nullptr;
    if (axisLinksGeometry)
        return "an axis that is linked to geometry";
    if (!primaryComponent.isEmpty())
        return "a component of what is measured along an axis";
    const double length = (axisEnd - axisStart).length();
    return length > 0.0 && std::isfinite(length) ? nullptr : "an axis without a length";
}

/// v n, and of places (x - start) n, n being the direction of the axis.
static std::vector<double> alongAxis(const SQueryValues& values, const C3DPoint& start, const C3DPoint& end)
{
    const C3DVector direction = (end - start).normalised();
    std::vector<double> parts;
    parts.reserve(values.rowCount());
    for (std::size_t row = 0; row < values.rowCount(); ++row) {
        const double* const v = values.primary.data() + row * 3;
        const C3DPoint place(v[0], v[1], v[2]);
        parts.push_back((values.arePlaces ? place - start : place.toVector()).dot(direction));
    }
    return parts;
}

template <class TValue>
static void takeRow(std::vector<TValue>& taken, const std::vector<TValue>& values, std::size_t row)
{
    if (!values.empty())
        taken.push_back(values[row]);
}

/// All but the primary attribute.
static void takeOthers(SQueryValues& taken, const SQueryValues& values, std::size_t row)
{
    takeRow(taken.secondary, values.secondary, row);
    takeRow(taken.mass, values.mass, row);
    takeRow(taken.position, values.position, row);
    takeRow(taken.velocity, values.velocity, row);
    takeRow(taken.force, values.force, row);
    takeRow(taken.area, values.area, row);
}

SQueryValues SQueryValues::ofRows(const std::vector<std::size_t>& rows) const
{
    SQueryValues some;
    some.time = time;
    some.width = width;
    some.arePlaces = arePlaces;
    some.volume = volume;
    for (const std::size_t row : rows) {
        const double* const first = primary.data() + row * width;
        some.primary.insert(some.primary.end(), first, first + width);
        takeOthers(some, *this, row);
    }
    return some;
}

/// A range is one of numbers: a row of several has none.
void CQuery::collect(const SQueryValues& values)
{
    const bool isMeasured = useAxis && values.width == 3;
    const std::vector<double> measured = isMeasured ? alongAxis(values, axisStart, axisEnd) : std::vector<double>();
    const std::vector<double>& primary = isMeasured ? measured : values.primary;
    taken = SQueryValues();
    taken.time = values.time;
    taken.width = isMeasured ? 1 : values.width;
    taken.volume = values.volume;
    for (std::size_t row = 0; row < values.rowCount(); ++row) {
        const double* const first = primary.data() + row * taken.width;
        if (isRanged() && taken.width == 1 && !(*first >= minimum && *first <= maximum))
            continue;
        if (useRange2 && !values.secondary.empty() &&
            !(values.secondary[row] >= secondaryMinimum && values.secondary[row] <= secondaryMaximum))
            continue;
        taken.primary.insert(taken.primary.end(), first, first + taken.width);
        takeOthers(taken, values, row);
    }
}

bool CQuery::inner(const QString& identifier, const SQueryValues& values, std::vector<double>& result)
{
    const std::unique_ptr<CQuery> query = createQuery(identifier, 0);
    if (query == nullptr || query->isOverTime() || dynamic_cast<const CTwoAttribQuery*>(query.get()) != nullptr)
        return false;
    query->collect(values);
    return query->calculate(result);
}

// ---------------------------------------------------------------- reductions, number by number of a row

template <class TReduce>
static bool reduced(const SQueryValues& values, std::vector<double>& result, const TReduce& reduce)
{
    result.clear();
    if (values.rowCount() == 0)
        return false;
    result.assign(values.primary.begin(), values.primary.begin() + static_cast<std::ptrdiff_t>(values.width));
    for (std::size_t i = values.width; i < values.primary.size(); ++i)
        result[i % values.width] = reduce(result[i % values.width], values.primary[i]);
    return true;
}

static double sumOf(double a, double b) { return a + b; }
static double lesser(double a, double b) { return std::min(a, b); }
static double greater(double a, double b) { return std::max(a, b); }

bool CNormalQuery::calculate(std::vector<double>& result) const
{
    result = taken.primary;
    return !result.empty();
}

void CTotalQuery::collect(const SQueryValues& values)
{
    CQuery::collect(values);
    std::vector<double> sums;
    if (useIdCounter)
        sums = {static_cast<double>(taken.rowCount())};
    else if (!reduced(taken, sums, sumOf))
        sums.assign(taken.width, 0.0);
    if (!overTime || total.size() != sums.size())
        total.assign(sums.size(), 0.0);
    std::transform(total.begin(), total.end(), sums.begin(), total.begin(), sumOf);
}

std::optional<quint32> CTotalQuery::ownQuantity() const
{
    return useIdCounter ? std::optional<quint32>(eNoQuantity) : std::nullopt;
}

bool CTotalQuery::calculate(std::vector<double>& result) const
{
    result = total;
    return !result.empty();
}

bool CAverageQuery::calculate(std::vector<double>& result) const
{
    if (!reduced(taken, result, sumOf))
        return false;
    for (double& sum : result)
        sum /= static_cast<double>(taken.rowCount());
    return true;
}

bool CMaximumQuery::calculate(std::vector<double>& result) const { return reduced(taken, result, greater); }
bool CMinimumQuery::calculate(std::vector<double>& result) const { return reduced(taken, result, lesser); }

/// The maximum of each number of a row, then the minimum of each.
bool CMaxMinQuery::calculate(std::vector<double>& result) const
{
    std::vector<double> least;
    if (!reduced(taken, result, greater) || !reduced(taken, least, lesser))
        return false;
    result.insert(result.end(), least.begin(), least.end());
    return true;
}

const char* CCoGQuery::obstacle() const { return hasReferences() ? referenceObstacle : CQuery::obstacle(); }

/// Sum of m x over sum of m, m.
bool CCoGQuery::calculate(std::vector<double>& result) const
{
    result.clear();
    C3DVector moment;
    double mass = 0.0;
    for (std::size_t row = 0; row < taken.mass.size() && row < taken.position.size(); ++row) {
        moment += taken.position[row].toVector() * taken.mass[row];
        mass += taken.mass[row];
    }
    if (!(mass > 0.0))
        return false;
    result = {moment.x / mass, moment.y / mass, moment.z / mass};
    return true;
}

// ---------------------------------------------------------------- what sensors measure

const char* CMassFlowQuery::obstacle() const
{
    const char* const ofAll = CQuery::obstacle();
    return ofAll == nullptr && !useAxis ? "a flow without an axis" : ofAll;
}

/// Sum of m v n over L, kg/s: what is in a region of the axis' length L moves along its direction n.
bool CMassFlowQuery::calculate(std::vector<double>& result) const
{
    result.clear();
    const C3DVector axis = axisEnd - axisStart;
    const double square = axis.squaredLength();
    if (obstacle() != nullptr || taken.velocity.size() != taken.mass.size())
        return false;
    double flow = 0.0;
    for (std::size_t row = 0; row < taken.mass.size(); ++row)
        flow += taken.mass[row] * taken.velocity[row].dot(axis) / square;
    result = {flow}; // none, where nothing is
    return true;
}

const char* CDensityQuery::obstacle() const
{
    const char* const ofAll = CQuery::obstacle();
    return ofAll == nullptr && densityKind != 0 ? "a density of this kind" : ofAll;
}

/// Sum of m over the volume of the region, kg/m^3: of the bulk, with all that is between the particles.
bool CDensityQuery::calculate(std::vector<double>& result) const
{
    result.clear();
    if (obstacle() != nullptr || !(taken.volume > 0.0))
        return false;
    result = {std::accumulate(taken.mass.begin(), taken.mass.end(), 0.0) / taken.volume};
    return true;
}

/// Sum of the compressive forces over the sum of the areas, Pa.
bool CPressurePerSelectionQuery::calculate(std::vector<double>& result) const
{
    result.clear();
    const double area = std::accumulate(taken.area.begin(), taken.area.end(), 0.0);
    if (obstacle() != nullptr || !(area > 0.0))
        return false;
    result = {std::accumulate(taken.force.begin(), taken.force.end(), 0.0) / area};
    return true;
}

// ---------------------------------------------------------------- distributions

static constexpr qint32 mostIntervals = 100000;

/// The interval of a value among equal ones between two ends, both of which belong to one; -1 for none.
static int intervalOf(double value, double from, double to, qint32 intervals)
{
    if (!(value >= from && value <= to) || !std::isfinite(to - from))
        return -1;
    const double share = to > from ? (value - from) / (to - from) : 0.0;
    return std::min(static_cast<int>(share * intervals), intervals - 1);
}

/// How many values are in each interval: between the ends of the range, or between the extremes of the values.
bool CDistributionQuery::calculate(std::vector<double>& result) const
{
    result.clear();
    if (intervals < 1 || intervals > mostIntervals || taken.width != 1 || taken.primary.empty())
        return false;
    const auto [least, greatest] = std::minmax_element(taken.primary.begin(), taken.primary.end());
    const double from = isRanged() ? minimum : *least;
    const double to = isRanged() ? maximum : *greatest;
    result.assign(static_cast<std::size_t>(intervals), 0.0);
    for (const double value : taken.primary)
        if (const int interval = intervalOf(value, from, to, intervals); interval >= 0)
            ++result[static_cast<std::size_t>(interval)];
    return true;
}

void CTimeDistributionQuery::collect(const SQueryValues& values)
{
    CQuery::collect(values);
    std::vector<double> answer;
    if (inner(queryType, taken, answer) && answer.size() == 1)
        answers.emplace_back(values.time, answer.front());
}

/// The mean of the inner query's answers over the timesteps of each interval of time; no number for one without any.
bool CTimeDistributionQuery::calculate(std::vector<double>& result) const
{
    result.clear();
    if (intervals < 1 || intervals > mostIntervals)
        return false;
    std::vector<double> sums(static_cast<std::size_t>(intervals));
    std::vector<double> counts(sums.size());
    for (const auto& [time, answer] : answers) {
        const int interval = intervalOf(time, startTime, endTime, intervals);
        if (interval < 0)
            continue;
        sums[static_cast<std::size_t>(interval)] += answer;
        ++counts[static_cast<std::size_t>(interval)];
    }
    if (std::all_of(counts.begin(), counts.end(), [](double count) { return count == 0.0; }))
        return false;
    constexpr double none = std::numeric_limits<double>::quiet_NaN();
    result.resize(sums.size());
    std::transform(sums.begin(), sums.end(), counts.begin(), result.begin(),
                   [](double sum, double count) { return count > 0.0 ? sum / count : none; });
    return true;
}

/// The answer of one query to the first attribute, then that of another to the second.
bool CTwoAttribQuery::calculate(std::vector<double>& result) const
{
    SQueryValues second;
    second.primary = taken.secondary;
    std::vector<double> answer;
    if (!inner(queryType1, taken, result) || !inner(queryType2, second, answer)) {
        result.clear();
        return false;
    }
    result.insert(result.end(), answer.begin(), answer.end());
    return true;
}

} // namespace NBrenmark
