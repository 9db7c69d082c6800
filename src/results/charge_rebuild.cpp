// Old files store charges beside the particles; today they are custom properties.
#include "core/log.h"
#include "model/creator_data.h"
#include "results/timestep_data.h"

#include <algorithm>

namespace NBrenmark {

static bool anyOtherThanZero(const double* values, std::size_t count)
{
    return std::any_of(values, values + count, [](double value) { return value != 0.0; });
}

/// Fills a property of a type from an array of the same width that holds a row for each slot, or none.
template <class T>
static void moveRows(CParticleType& type, const CCustomPropertyManager& manager, const char* name,
                     const std::vector<T>& rows)
{
    constexpr std::size_t width = sizeof(T) / sizeof(double);
    static_assert(sizeof(T) == width * sizeof(double), "rows without gaps");
    if (rows.size() != type.slotCount() || rows.empty())
        return;
    const auto* const numbers = reinterpret_cast<const double*>(rows.data());
    CCustomPropertyValueList* const list = type.customProperties.list(name);
    if (list != nullptr && list->elementsPerItem() == width) {
        if (!list->heldByFile())
            std::copy(numbers, numbers + rows.size() * width, list->values.begin());
        return;
    }
    if (manager.property(name) != nullptr && anyOtherThanZero(numbers, rows.size() * width))
        logMessage(eWarning, "Conversion",
                   "Particle type \"" + type.displayName.toStdString() + "\": the stored values for the property \"" +
                       name + "\" are dropped, for no saved time of the deck holds that property.");
}

void CTimestepData::rebuildChargeProperties()
{
    CCustomPropertyManager* const manager = particleTypes.properties();
    if (manager == nullptr)
        return;
    const char* const charge = "Charge";
    const char* const force = "Electrostatic Force";
    if (manager->property(charge) == nullptr && manager->property(force) == nullptr)
        return;
    for (const auto& type : particleTypes.types) {
        if (type->customProperties.itemCount() != type->slotCount())
            type->customProperties.resize(type->slotCount());
        moveRows(*type, *manager, charge, type->electrostatic.charge);
        moveRows(*type, *manager, force, type->electrostatic.electrostaticForce);
    }
    manager->setModified(false);
}

} // namespace NBrenmark
