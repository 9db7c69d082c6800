// One function for each record: its fields by their names.
#include "brenmark/law/parameters_from_json.h"

#include "brenmark/failure.h"

#include "physics/parameter_records.h"

namespace NBrenmark {

static void take(CNameTable& table, const CJsonMembers& json, const char* name)
{
    for (const auto& [key, value] : json.numbersByName(name))
        table.set(key, value);
}

static std::pair<std::string, std::string> pairOf(const CJsonMembers& json)
{
    const std::vector<std::string> names = json.texts("pair");
    if (names.size() != 2)
        throw CFailure(eExitUsage, "a pair of a table has " + std::to_string(names.size()) + " names",
                       "Give each entry \"pair\": [\"NAME\", \"NAME\"].");
    return {names[0], names[1]};
}

/// Entries by pair. \param valueOf  the value of an entry
template <class TValue, class TOf>
static void take(CPairTable<TValue>& table, const CJsonMembers& json, const TOf& valueOf)
{
    for (const CJsonMembers& entry : json.objects("pairs")) {
        const auto [a, b] = pairOf(entry);
        table.set(a, b, valueOf(entry));
    }
}

// ---------------------------------------------------------------- the records

static void setRecord(CHertzMindlinNoSlipContactModelParamData&, const CJsonMembers&) {}
static void setRecord(CMovingPlaneContactModelParamData&, const CJsonMembers&) {}
static void setRecord(CLinearSpringContactModelParamData& record, const CJsonMembers& json)
{
    record.characteristicVelocity = json.number("characteristicVelocity", record.characteristicVelocity);
}
static void setRecord(CHeatConductionModelParamData& record, const CJsonMembers& json)
{
    take(record.conductivities, json, "conductivities");
}
static void setRecord(CArchardContactModelParamData& record, const CJsonMembers& json)
{
    take(record.wearConstants, json, "wearConstants");
}
static void setRecord(CCohesionContactModelParamData& record, const CJsonMembers& json)
{
    take(record.energyDensity, json, [](const CJsonMembers& entry) { return entry.number("energyDensity"); });
}
static void setRecord(CJkrContactModelParamData& record, const CJsonMembers& json)
{
    take(record.surfaceEnergy, json, [](const CJsonMembers& entry) { return entry.number("surfaceEnergy"); });
}
static void setRecord(CHystereticContactModelParamData& record, const CJsonMembers& json)
{
    take(record.yields, json, "yields");
    take(record.interactions, json, [](const CJsonMembers& entry) {
        return SHystereticInteraction{entry.number("damping"), entry.number("stiffness")};
    });
}
static void setRecord(CEdinburghCohesionContactModelParamData& record, const CJsonMembers& json)
{
    take(record.pairs, json, [](const CJsonMembers& entry) {
        const SEdinburghPair unset;
        return SEdinburghPair{
            entry.number("constPullOffForce"),      entry.number("surfaceEnergy"),
            entry.number("contactPlasticityRatio"), entry.number("slopeExponential", unset.slopeExponential),
            entry.number("tensileExponential"),     entry.number("tangentStiffMultiplier")};
    });
}
static void setRecord(CLeedsAdhesionContactModelParamData& record, const CJsonMembers& json)
{
    take(record.pairs, json, [](const CJsonMembers& entry) {
        return SLeedsPair{entry.number("plasticStiffness"),         entry.number("elasticStiffness"),
                          entry.number("plasticAdhesiveStiffness"), entry.number("tangentialStiffness"),
                          entry.number("initialAdhesiveForce"),     entry.number("initialAdhesivePlasticForce")};
    });
}
static void setRecord(CParallelBondContactModelParamData& record, const CJsonMembers& json)
{
    record.formationStartTime = json.number("formationStartTime", record.formationStartTime);
    record.formationEndTime = json.number("formationEndTime", record.formationEndTime);
    record.state = json.count("state", record.state);
    record.torqueFeedback = json.flag("torqueFeedback", record.torqueFeedback);
    for (const CJsonMembers& entry : json.objects("bondParameters")) {
        const auto [a, b] = pairOf(entry);
        CBondParameters bond;
        bond.normalStiffness = entry.number("normalStiffness");
        bond.shearStiffness = entry.number("shearStiffness");
        bond.normalStrength = entry.number("normalStrength");
        bond.shearStrength = entry.number("shearStrength");
        bond.bondRadius = entry.number("bondRadius");
        record.bondParameters.set(CBondParametersMap::pairKey(a, b), bond);
    }
}
static void setRecord(CTribochargingContactModelParamData& record, const CJsonMembers& json)
{
    record.alpha = json.number("alpha", record.alpha);
}
static void setRecord(CElectrostaticsExtForceParamData& record, const CJsonMembers& json)
{
    record.screeningDistance = json.number("screeningDistance", record.screeningDistance);
}
static void setRecord(CHeatConductionExtForceParamData& record, const CJsonMembers& json)
{
    take(record.heatCapacities, json, "heatCapacities");
}

// ---------------------------------------------------------------- from an object to its record

/// \return whether the object has a record of this class
template <class TRecord>
static bool setAs(IParamData& data, const CJsonMembers& json)
{
    auto* const record = dynamic_cast<TRecord*>(&data);
    if (record == nullptr)
        return false;
    if constexpr (std::is_base_of_v<CRollingFrictionParamData, TRecord>)
        record->enableRollingFriction = json.flag("enableRollingFriction", record->enableRollingFriction);
    setRecord(*record, json);
    return true;
}

template <class... TRecords>
static void setAsOneOf(IParameterSupport& object, const CJsonMembers& json)
{
    if (const std::unique_ptr<IParamData> data = object.paramData()) {
        (setAs<TRecords>(*data, json) || ...);
        object.setParamData(*data);
    }
}

void setParameters(IContactModel& model, const CJsonMembers& json)
{
    setAsOneOf<CHertzMindlinNoSlipContactModelParamData, CLinearSpringContactModelParamData,
               CHeatConductionModelParamData, CArchardContactModelParamData, CCohesionContactModelParamData,
               CJkrContactModelParamData, CHystereticContactModelParamData, CEdinburghCohesionContactModelParamData,
               CLeedsAdhesionContactModelParamData, CParallelBondContactModelParamData,
               CTribochargingContactModelParamData, CMovingPlaneContactModelParamData>(model, json);
}

void setParameters(IExternalForce& force, const CJsonMembers& json)
{
    setAsOneOf<CElectrostaticsExtForceParamData, CHeatConductionExtForceParamData>(force, json);
}

} // namespace NBrenmark
