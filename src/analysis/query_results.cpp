// What queries make of the values that they collected.
#include "analysis/query_kinds.h"

#include "visitors/attribute_retrieval.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace NBrenmark {

// ---------------------------------------------------------------- attributes and values

/// The attribute of a name with its component, or that of the name alone.
static const NAttributes::CAttributeDescriptor*
attributeNamed(const std::vector<const NAttributes::CAttributeDescriptor*>& attributes, const QString& name,
               const QString& component)
{
    const QString whole = component.isEmpty() ? name : name + QLatin1Char(' ') + component;
    const auto found = std::find_if(attributes.begin(), attributes.end(),
                                    [&whole](const auto* attribute) { return attribute->name == whole; });
    return found == attributes.end() ? nullptr : *found;
}

void CQuery::bindAttributes(const std::vector<const NAttributes::CAttributeDescriptor*>& attributes)
{
    primaryObject = attributeNamed(attributes, primaryAttribute, primaryComponent);
    secondaryObject = attributeNamed(attributes, secondaryAttribute, secondaryComponent);
}

/// A range is one of numbers: a row of several has none.
void CQuery::collect(const SQueryValues& values)
{
    taken = SQueryValues();
    taken.time = values.time;
    taken.width = values.width;
    for (std::size_t row = 0; row < values.rowCount(); ++row) {
        const double* const first = values.primary.data() + row * values.width;
        if (useRange && values.width == 1 && !(*first >= minimum && *first <= maximum))
            continue;
        if (useRange2 && !values.secondary.empty() &&
            !(values.secondary[row] >= secondaryMinimum && values.secondary[row] <= secondaryMaximum))
            continue;
        taken.primary.insert(taken.primary.end(), first, first + values.width);
        if (!values.secondary.empty())
            taken.secondary.push_back(values.secondary[row]);
        if (!values.mass.empty())
            taken.mass.push_back(values.mass[row]);
        if (!values.position.empty())
            taken.position.push_back(values.position[row]);
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
    const double from = useRange ? minimum : *least;
    const double to = useRange ? maximum : *greatest;
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
