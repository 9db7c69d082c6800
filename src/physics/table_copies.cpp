// What a new type or material takes over from its original in the tables of models and forces.
#include "physics/table_copies.h"

#include "physics/archard_wear.h"
#include "physics/cohesion.h"
#include "physics/edinburgh_adhesion.h"
#include "physics/heat_conduction.h"
#include "physics/hysteretic_spring.h"
#include "physics/jkr.h"
#include "physics/leeds_adhesion.h"
#include "physics/parallel_bond.h"
#include "physics/physics_models.h"
#include "physics/temperature_update.h"

namespace NBrenmark {

/// Changes a table of an object whose parameters are of one class; any other is left alone.
/// \return whether they are
template <class TRecord, class TTable, class TChange>
static bool changeTable(IParameterSupport& object, TTable TRecord::*table, TChange&& change)
{
    const std::unique_ptr<IParamData> data = object.paramData();
    auto* const record = dynamic_cast<TRecord*>(data.get());
    if (record == nullptr)
        return false;
    change(record->*table);
    object.setParamData(*record);
    return true;
}

static void copyPairEntries(IContactModel& model, const QString& original, const QString& copy)
{
    const auto add = [&](auto& table) { addCopies(table, original.toStdString(), copy.toStdString()); };
    changeTable(model, &CCohesionContactModelParamData::energyDensity, add) ||
        changeTable(model, &CHystereticContactModelParamData::interactions, add) ||
        changeTable(model, &CJkrContactModelParamData::surfaceEnergy, add) ||
        changeTable(model, &CParallelBondContactModelParamData::bondParameters, add) ||
        changeTable(model, &CEdinburghCohesionContactModelParamData::pairs, add) ||
        changeTable(model, &CLeedsAdhesionContactModelParamData::pairs, add);
}

static void copyNamedEntries(CPhysicsModels& physics, const QString& original, const QString& copy)
{
    const auto add = [&](CNameTable& table) {
        const auto entry = table.entries.find(original.toStdString());
        if (entry != table.entries.end())
            table.entries.emplace(copy.toStdString(), entry->second);
    };
    for (CPhysicsModels::Chain* const chain : {&physics.sphereSphereModels, &physics.sphereGeometryModels})
        for (const auto& model : *chain)
            changeTable(*model, &CHystereticContactModelParamData::yields, add) ||
                changeTable(*model, &CHeatConductionModelParamData::conductivities, add) ||
                changeTable(*model, &CArchardContactModelParamData::wearConstants, add);
    for (const auto& force : physics.externalForces)
        changeTable(*force, &CHeatConductionExtForceParamData::heatCapacities, add);
}

void copyEntries(CPhysicsModels& physics, const QString& original, const QString& copy, const HasPairsOfThese& hasPairs)
{
    copyNamedEntries(physics, original, copy);
    for (CPhysicsModels::Chain* const chain : {&physics.sphereSphereModels, &physics.sphereGeometryModels})
        for (const auto& model : *chain)
            if (hasPairs(*model))
                copyPairEntries(*model, original, copy);
}

} // namespace NBrenmark
