// Why: today a template is stored once, in a type, at size 1, and its particles are rows. A record holds the template at the
// particle's own size, so that it has to be brought back to size 1 before two of them can be known for one type.
#include "legacy/particle_prototypes.h"

#include "core/counted.h"
#include "core/log.h"
#include "legacy/definition_index.h"
#include "model/creator_data.h"

#include <QHash>

#include <algorithm>
#include <cmath>
#include <map>

namespace NBrenmark::NLegacySupport {

static C3DPoint scaled(const C3DPoint& p, double factor) { return C3DPoint(p.x * factor, p.y * factor, p.z * factor); }

void CParticlePrototype::rescale(double factor)
{
    const double cubed = factor * factor * factor;
    scale *= factor;
    mass *= cubed;
    volume *= cubed;
    inertia = scaled(inertia, cubed * factor * factor);
    for (SPrototypeElement& element : elements) {
        element.position = scaled(element.position, factor);
        element.contactRadius *= factor;
        element.physicalRadius *= factor;
    }
}

void fillFromPrototype(CParticleType& type, const CParticlePrototype& prototype)
{
    type.setName(prototype.name);
    type.rawMass = prototype.mass;
    type.rawVolume = prototype.volume;
    type.rawInertia = prototype.inertia;
    type.materialName = prototype.materialName;
    type.spheres.clear();
    for (const SPrototypeElement& element : prototype.elements) {
        CSphere& sphere = type.spheres.emplace_back();
        sphere.name = element.name;
        sphere.position = element.position;
        sphere.setRadii(element.contactRadius, element.physicalRadius);
    }
}

void fillFromPrototypes(CParticleTypes& types, const CParticlePrototypeMap& prototypes)
{
    types.clear();
    for (const CParticlePrototype& prototype : prototypes)
        fillFromPrototype(types.append(), prototype);
}

// ---------------------------------------------------------------- the particles of a timestep

/// The fields that a record of an old deck gives values for.
static constexpr quint32 recordFields = allParticleFields & ~quint32(eCreationTime);

static void addPrototypeParticle(CParticleType& type, CParticlePrototype& prototype)
{
    SParticleState state;
    state.id = prototype.id;
    state.velocity = prototype.velocity;
    state.position = prototype.position;
    state.orientation = prototype.orientation;
    state.angularVelocity = prototype.angularVelocity;
    state.scale = prototype.scale;
    state.forceTorque = prototype.forceTorque;
    state.unscaledForceTorque = prototype.unscaledForceTorque;
    state.externalForceTorque = prototype.externalForceTorque;
    state.customValues.swap(prototype.customValues);
    type.addParticle(state);
    type.electrostatic.charge.resize(type.slotCount());
    type.electrostatic.charge.back() = prototype.charge;
    type.electrostatic.electrostaticForce.resize(type.slotCount());
    type.electrostatic.electrostaticForce.back() = prototype.electrostaticForce;
}

/// The custom values of a record follow one another without a name.
static void reportCustomValues(const CParticlePrototypeRecords& records, const CParticleTypes& types)
{
    const std::size_t expected = types.types.empty() ? 0 : types.types.front()->customProperties.elementsTotal();
    quint64 surplus = 0;
    quint64 missing = 0;
    for (const CParticlePrototype& record : records) {
        const std::size_t stored = record.customValues.size();
        surplus += stored > expected ? stored - expected : 0;
        missing += stored != 0 && stored < expected ? expected - stored : 0;
    }
    if (surplus > 0)
        report(eNotCarried, NLogTitle::customProperties,
               std::to_string(surplus) + " custom values of particles belong to no property and are dropped", surplus);
    if (missing > 0)
        report(eDefaulted, NLogTitle::customProperties,
               std::to_string(missing) + " custom values of particles are missing and become initial values", missing);
}

/// Brings the template of a record to size 1. The particle keeps its own size.
static void bringToSizeOne(CParticlePrototype& record)
{
    constexpr double sameScale = 1e-12;
    const double scale = record.scale;
    if (!(std::abs(scale - 1.0) >= sameScale))
        return;
    record.rescale(1.0 / scale);
    record.scale = scale;
}

/// A particle without a size has no template either: it is taken as it is.
static void repairScales(CParticlePrototypeRecords& records)
{
    quint64 repaired = 0;
    for (CParticlePrototype& record : records) {
        if (record.scale != 0.0)
            continue;
        record.scale = 1.0;
        ++repaired;
    }
    if (repaired > 0)
        report(eRepaired, NLogTitle::legacyRead,
               std::to_string(repaired) + (repaired == 1 ? " particle of scale 0 is" : " particles of scale 0 are") +
                   " taken as of scale 1.",
               repaired);
}

/// The id of a particle is 1 or more; a place without one is free.
static void reportParticlesWithoutId(const CParticlePrototypeRecords& records)
{
    const auto without =
        std::count_if(records.begin(), records.end(), [](const CParticlePrototype& record) { return record.id < 1; });
    report(eLost, NLogTitle::legacyRead, counted(without, "particle") + " without an id dropped",
           static_cast<quint64>(without));
}

/// Each type of the definition has its place in the timestep, with particles or without.
static void addTypesWithoutParticles(CParticleTypes& types, CDefinitionIndex& index, const CCreatorData& creator)
{
    CParticleType stored(types.properties());
    QHash<QString, CParticleType*> lastOfName;
    for (const auto& type : types.types)
        lastOfName[type->displayName] = type.get();
    for (const auto& defined : creator.particleTypes.types) {
        stored.copyDefinition(*defined);
        if (const auto before = creator.materialsBefore.find(defined->displayName);
            before != creator.materialsBefore.end() && !before->second.isNull())
            stored.materialName = before->second;
        CParticleType* const found = index.find(stored);
        if (found == nullptr) {
            CParticleType& added = types.append();
            added.copyDefinition(*defined);
            added.dataMask = recordFields;
            index.add(added);
            lastOfName[added.displayName] = &added;
            continue;
        }
        // Of several types of a name the last is the one that is found by it: that has to be the definition's.
        CParticleType* const named = lastOfName.value(defined->displayName);
        if (named == nullptr || named == found)
            continue;
        named->swapContents(*found);
        index.add(*named);
        index.add(*found);
    }
}

void fillFromRecords(CParticleTypes& types, CParticlePrototypeRecords& records, const CCreatorData& creator)
{
    types.clear();
    repairScales(records);
    reportParticlesWithoutId(records);
    CDefinitionIndex index;
    CParticleType working(types.properties());
    std::vector<CParticleType*> typeOfRecord;
    std::map<CParticleType*, quint32> counts;
    for (CParticlePrototype& record : records) {
        bringToSizeOne(record);
        fillFromPrototype(working, record);
        CParticleType* type = index.find(working);
        if (type == nullptr) {
            type = &types.append();
            type->copyDefinition(working);
            type->dataMask = recordFields;
            index.add(*type);
        }
        typeOfRecord.push_back(type);
        ++counts[type];
    }
    for (const auto& [type, count] : counts) {
        type->reserveSlots(count);
        type->electrostatic.charge.reserve(count);
        type->electrostatic.electrostaticForce.reserve(count);
    }
    reportCustomValues(records, types);
    for (std::size_t i = 0; i < records.size(); ++i)
        addPrototypeParticle(*typeOfRecord[i], records[i]);
    addTypesWithoutParticles(types, index, creator);
    for (const auto& type : types.types)
        type->rebuildFreeList();
    types.recomputeMaxId(true);
    types.rebuildIdLookup();
    for (const auto& type : types.types)
        for (quint32 slot = 0; slot < type->slotCount(); ++slot)
            type->updateSpherePositions(slot, creator.domain);
}

} // namespace NBrenmark::NLegacySupport
