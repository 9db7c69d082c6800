// The slots of a particle type: its arrays, and the list of slots that are free.
#include "model/particle_type.h"

#include "platform/loop_threads.h"

#include <algorithm>
#include <utility>

namespace NBrenmark {

template <class TVisit>
void CParticleType::forEachSlotArray(const TVisit& visit)
{
    visit(ids);
    visit(scale);
    visit(velocity);
    visit(position);
    visit(orientation);
    visit(angularVelocity);
    visit(forceTorque);
    visit(unscaledForceTorque);
    visit(externalForceTorque);
    visit(creationTime);
    visit(activeFlags);
}

/// A quaternion that holds no data is zero like everything else, not the identity.
static const CQuaternion& emptyElement(const std::vector<CQuaternion>&)
{
    static const CQuaternion zero(0.0, 0.0, 0.0, 0.0);
    return zero;
}

template <class TElement>
static TElement emptyElement(const std::vector<TElement>&)
{
    return TElement();
}

template <class TElement>
static void emptyElements(std::vector<TElement>& array, std::size_t first, std::size_t count)
{
    const std::size_t end = std::min(array.size(), first + count); // an array that isn't there has none
    for (std::size_t index = first; index < end; ++index)
        array[index] = emptyElement(array);
}

/// An array that only some timesteps have: filled up if it is there at all.
template <class TElement>
static void resizeIfUsed(std::vector<TElement>& array, std::size_t count)
{
    if (!array.empty())
        array.resize(count);
}

void CParticleType::resizeArrays(quint32 count)
{
    forEachSlotArray([count](auto& array) { array.resize(count, emptyElement(array)); });
    resizeIfUsed(electrostatic.charge, count);
    resizeIfUsed(electrostatic.electrostaticForce, count);
    resizeIfUsed(electrostatic.words, count);
    resizeIfUsed(spherePositions, count * spheres.size());
    customProperties.resize(count);
    if (previousCustomProperties.itemCount() > 0)
        previousCustomProperties.resize(count);
}

void CParticleType::emptySlot(quint32 slot)
{
    forEachSlotArray([slot](auto& array) { emptyElements(array, slot, 1); });
    emptyElements(electrostatic.charge, slot, 1);
    emptyElements(electrostatic.electrostaticForce, slot, 1);
    emptyElements(electrostatic.words, slot, 1);
    emptyElements(spherePositions, slot * spheres.size(), spheres.size());
    customProperties.resetToInitial(slot);
    previousCustomProperties.resetToInitial(slot);
}

void CParticleType::resizeSlots(quint32 count)
{
    const bool cutsFreeSlots = count < slotCount() && freeCount > 0;
    resizeArrays(count);
    if (cutsFreeSlots)
        rebuildFreeList(); // its links may lead past the end
}

void CParticleType::reserveSlots(quint32 capacity)
{
    forEachSlotArray([capacity](auto& array) { array.reserve(capacity); });
}

quint32 CParticleType::allocateSlot()
{
    if (freeCount > 0) {
        const auto slot = static_cast<quint32>(~firstFree); // links are complements, below 0, so that no link is an id
        firstFree = ids[slot];
        --freeCount;
        emptySlot(slot);
        scale[slot] = 1.0;
        return slot;
    }
    const quint32 slot = slotCount();
    const bool growing = ids.size() == ids.capacity();
    ids.push_back(0);
    if (growing)
        reserveSlots(static_cast<quint32>(ids.capacity())); // all arrays grow as one
    resizeArrays(slot + 1);
    scale[slot] = 1.0;
    return slot;
}

quint32 CParticleType::addParticle(const SParticleState& state)
{
    const quint32 slot = allocateSlot();
    ids[slot] = state.id;
    velocity[slot] = state.velocity;
    position[slot] = state.position;
    orientation[slot] = state.orientation;
    angularVelocity[slot] = state.angularVelocity;
    scale[slot] = state.scale;
    forceTorque[slot] = state.forceTorque;
    unscaledForceTorque[slot] = state.unscaledForceTorque;
    externalForceTorque[slot] = state.externalForceTorque;
    customProperties.setItem(slot, state.customValues);
    return slot;
}

void CParticleType::releaseSlot(quint32 slot, bool shrinkIfLast)
{
    if (slot >= slotCount())
        return;
    if (shrinkIfLast && slot + 1 == slotCount()) {
        resizeArrays(slot); // no link leads to a slot in use
        return;
    }
    if (slot < activeFlags.size())
        activeFlags[slot] = 0;
    ids[slot] = firstFree;
    firstFree = ~static_cast<qint32>(slot);
    ++freeCount;
}

void CParticleType::rebuildFreeList()
{
    firstFree = 0;
    freeCount = 0;
    for (quint32 slot = 0; slot < slotCount(); ++slot)
        if (!isLive(slot))
            releaseSlot(slot, false); // the number of slots stays as it was stored
}

void CParticleType::clear()
{
    spheres.clear();
    firstFree = 0;
    freeCount = 0;
    dataMask = 0;
    // Swapped, not emptied: a million slots of a type that is gone would keep their memory.
    forEachSlotArray([](auto& array) { std::decay_t<decltype(array)>().swap(array); });
    electrostatic = CParticleTypeElectrostatic();
    std::vector<C3DPoint>().swap(spherePositions);
    customProperties.resetAll();
    previousCustomProperties.resetAll();
}

void CParticleTypeElectrostatic::copyCharges(std::vector<double>& values) const
{
    std::copy_n(charge.begin(), std::min(charge.size(), values.size()), values.begin());
}

void CParticleTypeElectrostatic::copyForces(std::vector<double>& values) const
{
    const auto rows = static_cast<qint64>(std::min(electrostaticForce.size(), values.size() / 3));
    constexpr int rowsAtOnce = 4096;
    constexpr qint64 worthThreads = 100000; // fewer are copied before a team is awake
#pragma omp parallel for schedule(dynamic, rowsAtOnce) num_threads(loopThreads(rows > worthThreads))
    for (qint64 row = 0; row < rows; ++row) {
        const C3DVector& force = electrostaticForce[static_cast<std::size_t>(row)];
        double* const to = values.data() + 3 * row;
        to[0] = force.x;
        to[1] = force.y;
        to[2] = force.z;
    }
}

void CParticleType::copyDefinition(const CParticleType& other)
{
    name = other.name;
    displayName = other.displayName;
    materialName = other.materialName;
    surfaceBased = other.surfaceBased;
    autoCenterParticle = other.autoCenterParticle;
    templateName = other.templateName;
    autoProperties = other.autoProperties;
    rawMass = other.rawMass;
    rawVolume = other.rawVolume;
    rawInertia = other.rawInertia;
    calculateProperties = other.calculateProperties;
    spheres = other.spheres;
    dataMask = other.dataMask;
    gravity = other.gravity;
}

void CParticleType::swapContents(CParticleType& other)
{
    using std::swap;
    swap(name, other.name);
    swap(displayName, other.displayName);
    swap(materialName, other.materialName);
    swap(surfaceBased, other.surfaceBased);
    swap(autoCenterParticle, other.autoCenterParticle);
    swap(templateName, other.templateName);
    swap(autoProperties, other.autoProperties);
    swap(rawMass, other.rawMass);
    swap(rawVolume, other.rawVolume);
    swap(rawInertia, other.rawInertia);
    swap(calculateProperties, other.calculateProperties);
    swap(spheres, other.spheres);

    swap(ids, other.ids);
    swap(scale, other.scale);
    swap(velocity, other.velocity);
    swap(position, other.position);
    swap(orientation, other.orientation);
    swap(angularVelocity, other.angularVelocity);
    swap(forceTorque, other.forceTorque);
    swap(unscaledForceTorque, other.unscaledForceTorque);
    swap(externalForceTorque, other.externalForceTorque);
    swap(creationTime, other.creationTime);
    swap(activeFlags, other.activeFlags);
    swap(spherePositions, other.spherePositions);
    swap(electrostatic, other.electrostatic);
    customProperties.swapValues(other.customProperties);
    swap(dataMask, other.dataMask);
    swap(gravity, other.gravity);

    swap(firstFree, other.firstFree);
    swap(freeCount, other.freeCount);
}

} // namespace NBrenmark
