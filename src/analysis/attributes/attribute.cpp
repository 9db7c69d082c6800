// Columns and single values of all attributes, primary and derived.
#include "analysis/attributes/attribute.h"

#include "model/geometry/geometry_group.h"
#include "model/particle_type.h"
#include "results/timestep_data.h"
#include "units/units_converter.h"

#include <algorithm>

namespace NBrenmark::NAttributes {

const CUnitsConverter& CAttribute::units() const { return parent != nullptr ? parent->units() : getUnits(unitsType); }

quint32 CAttribute::width() const
{
    switch (valueKind) {
    case eVectorValue: return 3;
    case eQuaternionValue: return 4;
    default: return elementCount;
    }
}

/// A particle type says which arrays it has. Of contacts those that aren't stored are zeros.
template <class TOwner>
static bool holds(const TOwner&, const SNeededArrays&)
{
    return true;
}
static bool holds(const CParticleType& type, const SNeededArrays& arrays)
{
    return (type.dataMask & arrays.ofParticles) == arrays.ofParticles;
}

template <class TOwner>
bool CAttribute::column(const TOwner& owner, const SAttributeRows& rows, const SUnit* unit, double* out) const
{
    if (parent != nullptr) {
        const quint32 wide = primary()->width();
        std::vector<double> values(rows.count * wide);
        if (!primary()->column(owner, rows, unit, values.data()))
            return false;
        for (std::size_t i = 0; i < rows.count; ++i)
            derive(values.data() + i * wide, wide, out + i * width());
        return true;
    }
    if (!holds(owner, arrays) || !read(owner, rows, out))
        return false;
    if (unit != nullptr)
        std::transform(out, out + rows.count * width(), out,
                       [unit](double base) { return base * unit->toDisplayFactor + unit->toDisplayOffset; });
    return true;
}

template bool CAttribute::column(const CTimestepData&, const SAttributeRows&, const SUnit*, double*) const;
template bool CAttribute::column(const CBondsBase&, const SAttributeRows&, const SUnit*, double*) const;
template bool CAttribute::column(const CCollisionsBase&, const SAttributeRows&, const SUnit*, double*) const;
template bool CAttribute::column(const CContactsBase&, const SAttributeRows&, const SUnit*, double*) const;
template bool CAttribute::column(const CParticleType&, const SAttributeRows&, const SUnit*, double*) const;
template bool CAttribute::column(const CGeometryGroup&, const SAttributeRows&, const SUnit*, double*) const;

// ---------------------------------------------------------------- single values

/// The unit that the user prefers; null where the base unit is it.
static const SUnit* preferredUnit(const CUnitsConverter& units)
{
    const auto index = static_cast<std::size_t>(units.currentIndex);
    return index > 0 && index < units.quantity.units.size() ? &units.quantity.units[index] : nullptr;
}

template <class TOwner>
bool CAttribute::single(SAttributeValue& value, const TOwner& owner, quint32 index, bool isLive) const
{
    value = SAttributeValue();
    std::vector<double> row(width());
    if (!isLive || !column(owner, {&index, 1}, preferredUnit(units()), row.data()))
        return false;
    value.units = &units();
    if (row.size() > value.numbers.size() || elementCount > 1) {
        value.tag = SAttributeValue::eNumberList;
        value.list = std::move(row);
        return true;
    }
    std::copy(row.begin(), row.end(), value.numbers.begin());
    value.tag = valueKind == eVectorValue       ? SAttributeValue::eVector
                : valueKind == eQuaternionValue ? SAttributeValue::eQuaternion
                                                : SAttributeValue::eScalar;
    return true;
}

bool CAttribute::valueForSimulation(SAttributeValue& value, const CTimestepData& owner, quint32 index) const
{
    return single(value, owner, index, index == 0);
}

bool CAttribute::valueForBond(SAttributeValue& value, const CBondsBase& owner, quint32 index) const
{
    return single(value, owner, index, index < owner.rowCount());
}

bool CAttribute::valueForCollision(SAttributeValue& value, const CCollisionsBase& owner, quint32 index) const
{
    return single(value, owner, index, index < owner.recordCount() && owner.ids[index] != 0);
}

bool CAttribute::valueForContact(SAttributeValue& value, const CContactsBase& owner, quint32 index) const
{
    return single(value, owner, index, index < owner.rowCount() && owner.isLive(index));
}

bool CAttribute::valueForParticle(SAttributeValue& value, const CParticleType& owner, quint32 index) const
{
    return single(value, owner, index, owner.isLive(index));
}

bool CAttribute::valueForGeometry(SAttributeValue& value, const CGeometryGroup& owner, quint32 index) const
{
    return single(value, owner, index, index < owner.triangleNodes.size());
}

// ---------------------------------------------------------------- rows

template <class TIsLive>
static std::vector<quint32> rowsThat(std::size_t count, const TIsLive& isLive)
{
    std::vector<quint32> rows;
    rows.reserve(count);
    for (quint32 row = 0; row < count; ++row)
        if (isLive(row))
            rows.push_back(row);
    return rows;
}

std::vector<quint32> liveRows(const CParticleType& owner)
{
    return rowsThat(owner.slotCount(), [&owner](quint32 row) { return owner.isLive(row); });
}

std::vector<quint32> liveRows(const CGeometryGroup& owner)
{
    return rowsThat(owner.triangleNodes.size(), [](quint32) { return true; });
}

std::vector<quint32> liveRows(const CContactsBase& owner)
{
    return rowsThat(owner.rowCount(), [&owner](quint32 row) { return owner.isLive(row); });
}

std::vector<quint32> liveRows(const CBondsBase& owner)
{
    return rowsThat(owner.rowCount(), [](quint32) { return true; });
}

std::vector<quint32> liveRows(const CCollisionsBase& owner)
{
    return rowsThat(owner.recordCount(), [&owner](quint32 row) { return owner.ids[row] != 0; });
}

std::vector<quint32> liveRows(const CTimestepData&) { return {0}; }

} // namespace NBrenmark::NAttributes
