// What a new type or material takes over from its original in the tables of models and forces.
#include "legacy/table_copies.h"

#include "model/creator_data.h"
#include "physics/archard_wear.h"
#include "physics/cohesion.h"
#include "physics/heat_conduction.h"
#include "physics/hysteretic_spring.h"
#include "physics/jkr.h"
#include "physics/parallel_bond.h"
#include "physics/temperature_update.h"

namespace NBrenmark::NLegacySupport {

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

void copyPairEntries(IContactModel& model, const QString& original, const QString& copy)
{
    const auto add = [&](auto& table) { addCopies(table, original.toStdString(), copy.toStdString()); };
    changeTable(model, &CCohesionContactModelParamData::energyDensity, add) ||
        changeTable(model, &CHystereticContactModelParamData::interactions, add) ||
        changeTable(model, &CJkrContactModelParamData::surfaceEnergy, add) ||
        changeTable(model, &CParallelBondContactModelParamData::bondParameters, add);
}

void copyNamedEntries(CCreatorData& creator, const QString& original, const QString& copy)
{
    const auto add = [&](CNameTable& table) {
        const auto entry = table.entries.find(original.toStdString());
        if (entry != table.entries.end())
            table.entries.emplace(copy.toStdString(), entry->second);
    };
    CPhysicsModels& physics = creator.physicsModels;
    for (CPhysicsModels::Chain* const chain : {&physics.sphereSphereModels, &physics.sphereGeometryModels})
        for (const auto& model : *chain)
            changeTable(*model, &CHystereticContactModelParamData::yields, add) ||
                changeTable(*model, &CHeatConductionModelParamData::conductivities, add) ||
                changeTable(*model, &CArchardContactModelParamData::wearConstants, add);
    for (const auto& force : physics.externalForces)
        changeTable(*force, &CHeatConductionExtForceParamData::heatCapacities, add);
}

void copyEntriesOfType(CCreatorData& creator, const QString& original, const QString& copy)
{
    copyNamedEntries(creator, original, copy);
    CPhysicsModels& physics = creator.physicsModels;
    for (CPhysicsModels::Chain* const chain : {&physics.sphereSphereModels, &physics.sphereGeometryModels})
        for (const auto& model : *chain)
            copyPairEntries(*model, original, copy);
}

} // namespace NBrenmark::NLegacySupport
