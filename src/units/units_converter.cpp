// Converts between base values and the units that people read.
#include "units/units_converter.h"

#include "config/user_preferences.h"

#include <array>
#include <utility>

namespace NBrenmark {

CUnitsConverter::CUnitsConverter(const SQuantity& ofQuantity) : quantity(ofQuantity)
{
    for (const SUnit& unit : quantity.units)
        names[names.size()] = QString::fromUtf8(unit.name);
    currentName = names.value(0);
}

/// Null for an index that the quantity lacks.
static const SUnit* unitOf(const SQuantity& quantity, int index)
{
    const bool isThere = index >= 0 && static_cast<std::size_t>(index) < quantity.units.size();
    return isThere ? &quantity.units[static_cast<std::size_t>(index)] : nullptr;
}

double CUnitsConverter::toDisplay(double base) const
{
    const SUnit* const unit = unitOf(quantity, currentIndex);
    return unit != nullptr ? base * unit->toDisplayFactor + unit->toDisplayOffset : base;
}

double CUnitsConverter::toBase(double value, int index) const
{
    const SUnit* const unit = unitOf(quantity, index);
    return unit != nullptr ? value * unit->factor + unit->offset : value;
}

C3DVector CUnitsConverter::toDisplay(const C3DVector& base) const
{
    return C3DVector(toDisplay(base.x), toDisplay(base.y), toDisplay(base.z));
}

void CUnitsConverter::refresh()
{
    if (quantity.key == nullptr)
        return;
    bool isNumber = false;
    const int stored = userPreferences()
                           .value(QStringLiteral("Units Config/") + QLatin1String(quantity.key), quantity.defaultIndex)
                           .toInt(&isNumber);
    currentIndex = isNumber ? stored : quantity.defaultIndex;
    currentName = names.value(currentIndex);
    Q_EMIT updateUnits(currentName);
}

template <std::size_t... numbers>
static CUnitsConverter& unitsByNumber(quint32 number, std::index_sequence<numbers...>)
{
    using Accessor = CUnitsConverter& (*)();
    static constexpr std::array<Accessor, sizeof...(numbers)> accessors{
        []() -> CUnitsConverter& { return CUnits<static_cast<EQuantity>(numbers)>::instance(); }...};
    return accessors[number]();
}

CUnitsConverter& getUnits(quint32 number)
{
    const bool hasUnits = number < eQuantityCount && number != eOtherQuantity;
    return unitsByNumber(hasUnits ? number : eNoQuantity, std::make_index_sequence<eQuantityCount>());
}

} // namespace NBrenmark
