// Old files store charges beside the particles and the triangles; today they are custom properties.
#include "core/log.h"
#include "model/creator_data.h"
#include "model/geometry/geometry_group.h"
#include "results/timestep_data.h"

#include <algorithm>
#include <type_traits>

namespace NBrenmark {

static const char* const chargeName = "Charge";
static const char* const forceName = "Electrostatic Force";

static bool anyOtherThanZero(const double* values, std::size_t count)
{
    return std::any_of(values, values + count, [](double value) { return value != 0.0; });
}

/// Whose rows are moved: its custom properties, how many items they have, and what the log calls it.
struct SChargedOwner
{
    CCustomPropertyData& properties;
    std::size_t items;
    std::string label;
};

/// Fills a property from an array of the same width that holds a row for each item, or none.
/// \param copyTo  copies the rows to the values of the property
template <class T, class TCopy>
static void moveRows(const SChargedOwner& owner, const CCustomPropertyManager& manager, const char* name,
                     const std::vector<T>& rows, const TCopy& copyTo)
{
    constexpr std::size_t width = std::is_same_v<T, double> ? 1 : 3; // elements of a row
    static_assert(sizeof(T) == width * sizeof(double), "rows without gaps");
    if (rows.size() != owner.items || rows.empty())
        return;
    const auto* const numbers = reinterpret_cast<const double*>(rows.data());
    CCustomPropertyValueList* const list = owner.properties.list(name);
    if (list != nullptr && list->elementsPerItem() == width) {
        if (!list->heldByFile())
            copyTo(list->values);
        return;
    }
    if (manager.property(name) != nullptr && anyOtherThanZero(numbers, rows.size() * width))
        report(eNotCarried, NLogTitle::conversion,
               owner.label + ": the stored values for the property \"" + name +
                   "\" are dropped, for no saved time of the deck holds that property.",
               rows.size() * width, name);
}

/// Lists of as many values as there are items, whatever a file held of them.
static void fit(const SChargedOwner& owner)
{
    if (owner.properties.itemCount() != owner.items)
        owner.properties.resize(static_cast<unsigned int>(owner.items));
}

static void rebuildOfGeometry(const GeometryGroups& geometry)
{
    CCustomPropertyManager* const manager = geometry.managers.geometry;
    if (manager == nullptr || manager->property(chargeName) == nullptr)
        return;
    for (CGeometryGroup* const group : geometry.groups()) {
        if (group == nullptr)
            continue;
        const SChargedOwner owner{group->customProperties, group->triangleNodes.size(),
                                  "Geometry group \"" + group->name + "\""};
        fit(owner);
        const std::vector<double>& charges = group->electrostatic.charges;
        moveRows(owner, *manager, chargeName, charges,
                 [&](std::vector<double>& values) { std::copy(charges.begin(), charges.end(), values.begin()); });
    }
    manager->setModified(false);
}

static void rebuildOfParticles(const CParticleTypes& types)
{
    CCustomPropertyManager* const manager = types.properties();
    if (manager == nullptr || (manager->property(chargeName) == nullptr && manager->property(forceName) == nullptr))
        return;
    for (const auto& type : types.types) {
        const SChargedOwner owner{type->customProperties, type->slotCount(),
                                  "Particle type \"" + type->displayName.toStdString() + "\""};
        fit(owner);
        const CParticleTypeElectrostatic& stored = type->electrostatic;
        moveRows(owner, *manager, chargeName, stored.charge,
                 [&](std::vector<double>& values) { stored.copyCharges(values); });
        moveRows(owner, *manager, forceName, stored.electrostaticForce,
                 [&](std::vector<double>& values) { stored.copyForces(values); });
    }
    manager->setModified(false);
}

void CTimestepData::rebuildChargeProperties()
{
    rebuildOfGeometry(creatorData.geometryGroups);
    rebuildOfParticles(particleTypes);
}

} // namespace NBrenmark
