// The list of types, and finding a particle by its id.
#include "model/particle_types.h"

#include "core/log.h"
#include "model/domain.h"
#include "visitors/file_visitor_reader.h"
#include "visitors/file_visitor_writer.h"

#include <QSet>

#include <algorithm>
#include <limits>

namespace NBrenmark {

/// What the list is prepared for: most simulations have fewer types.
constexpr std::size_t usualTypes = 100;

CParticleTypes::CParticleTypes(CCustomPropertyManager* propertyManager) : propertyManager(propertyManager)
{
    types.reserve(usualTypes);
}

void CParticleTypes::read(IFileVisitorReader& v) { v.readParticleTypes(*this); }

void CParticleTypes::write(IFileVisitorWriter& v) const { v.writeParticleTypes(*this); }

void CParticleTypes::clear()
{
    types.clear();
    lookup.clear();
    maxId = 0;
}

void CParticleTypes::recreate(quint32 count)
{
    types.clear();
    lookup.clear();
    while (types.size() < count)
        append();
}

CParticleType& CParticleTypes::append()
{
    types.push_back(std::make_unique<CParticleType>(propertyManager));
    return *types.back();
}

// ---------------------------------------------------------------- by name

CParticleType* CParticleTypes::find(const QString& name) const
{
    quint32 index = 0;
    return findIndex(name, index) ? types[index].get() : nullptr;
}

bool CParticleTypes::findIndex(const QString& name, quint32& outIndex) const
{
    const auto found = std::find_if(types.rbegin(), types.rend(), [&](const std::unique_ptr<CParticleType>& type) {
        return type->displayName == name;
    });
    if (found == types.rend())
        return false;
    outIndex = static_cast<quint32>(types.rend() - found - 1);
    return true;
}

QStringList CParticleTypes::names() const
{
    QStringList names;
    QSet<QString> known;
    for (const std::unique_ptr<CParticleType>& type : types) {
        const int before = known.size();
        known.insert(type->displayName);
        if (known.size() > before)
            names.append(type->displayName);
    }
    return names;
}

std::vector<std::string> CParticleTypes::typesOfMaterial(const QString& materialName) const
{
    std::vector<std::string> names;
    for (const std::unique_ptr<CParticleType>& type : types)
        if (type->materialName == materialName)
            names.push_back(type->name);
    return names;
}

quint32 CParticleTypes::particleCount() const
{
    quint32 count = 0;
    for (const std::unique_ptr<CParticleType>& type : types)
        count += type->liveCount();
    return count;
}

quint32 CParticleTypes::particleCount(const QString& name) const
{
    for (const std::unique_ptr<CParticleType>& type : types)
        if (type->displayName == name)
            return type->liveCount();
    return 0;
}

double CParticleTypes::maxExtentOfType(const QString& name) const
{
    const CParticleType* const type = find(name);
    return type != nullptr ? type->maxExtent(1.0) : 0.0;
}

bool CParticleTypes::radiusRange(double& min, double& max, bool physical) const
{
    min = std::numeric_limits<double>::max();
    max = 0.0;
    bool anySphere = false;
    for (const std::unique_ptr<CParticleType>& type : types) {
        double typeMin = 0.0;
        double typeMax = 0.0;
        if (!type->radiusRange(typeMin, typeMax, physical))
            continue;
        anySphere = true;
        min = std::min(min, typeMin);
        max = std::max(max, typeMax);
    }
    return anySphere;
}

bool CParticleTypes::allocateParticle(const QString& typeName, quint32& typeIndex, quint32& slot)
{
    for (std::size_t index = types.size(); index-- > 0;) {
        if (types[index]->displayName != typeName)
            continue;
        typeIndex = static_cast<quint32>(index);
        slot = types[index]->allocateSlot();
        return true;
    }
    return false;
}

// ---------------------------------------------------------------- by id

void CParticleTypes::rebuildIdLookup() { lookup.rebuild(types, maxId); }

void CParticleTypes::recomputeMaxId(bool reset)
{
    if (reset)
        maxId = 0;
    for (const std::unique_ptr<CParticleType>& type : types)
        for (const qint32 id : type->ids)
            if (id >= 1)
                maxId = std::max(maxId, static_cast<quint32>(id));
}

void CParticleTypes::settle(qint64 storedMaxId, const SLogTitle& title)
{
    constexpr qint64 greatest = std::numeric_limits<quint32>::max();
    maxId = static_cast<quint32>(std::clamp<qint64>(storedMaxId, 0, greatest));
    recomputeMaxId(storedMaxId < 0); // an id beyond the greatest one would never be found
    if (maxId != storedMaxId)
        report(eRepaired, title,
               "The greatest particle id is " + std::to_string(maxId) + ", not " + std::to_string(storedMaxId) +
                   " as stored.");
    rebuildIdLookup();
}

bool CParticleTypes::locate(quint32 id, quint32& typeIndex, quint32& slot) const
{
    // The store may have changed since the lookup was made.
    return lookup.find(id, typeIndex, slot) && typeIndex < types.size() && types[typeIndex]->isLive(slot);
}

double CParticleTypes::scaleOf(quint32 id) const
{
    quint32 typeIndex = 0;
    quint32 slot = 0;
    if (!locate(id, typeIndex, slot))
        return 0.0;
    const std::vector<double>& scale = types[typeIndex]->scale;
    return slot < scale.size() ? scale[slot] : 0.0;
}

bool CParticleTypes::setScaleOf(quint32 id, double value)
{
    quint32 typeIndex = 0;
    quint32 slot = 0;
    if (!locate(id, typeIndex, slot))
        return false;
    std::vector<double>& scale = types[typeIndex]->scale;
    if (slot >= scale.size())
        return false;
    const std::lock_guard<std::mutex> guard(lock);
    scale[slot] = value;
    return true;
}

void CParticleTypes::updateAllSpherePositions()
{
    const CDomain unbounded; // no axis of it is periodic
    const CDomain& box = domain != nullptr ? *domain : unbounded;
    for (const std::unique_ptr<CParticleType>& type : types)
        for (quint32 slot = 0; slot < type->slotCount(); ++slot)
            type->updateSpherePositions(slot, box);
}

} // namespace NBrenmark
