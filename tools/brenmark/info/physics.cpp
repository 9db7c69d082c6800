#include "brenmark/info/sections.h"
#include "brenmark/info/table.h"

#include "brenmark/failure.h"
#include "brenmark/plugins/user_library.h"
#include "brenmark/units_text.h"
#include "model/factories/plugin_factory_list.h"
#include "physics/parameter_records.h"
#include "physics/phantoms.h"
#include "physics/physics_models.h"
#include "visitors/file_visitor_writer.h"

namespace NBrenmark {

namespace {

/// Collects what a model says of its parameters when it is to write them: single numbers with their unit, of
/// tables how many entries they have.
class CParameterCollector final : public IFileVisitorWriter
{
public:
    Json parameters = Json::array();

#define STORED(operation, type, ...)                                                                                   \
    void write##operation(const type& data) override { describe(data); }
#define STAMPED(operation, type, ...)                                                                                  \
    void write##operation(type&) override {}
#define LEGACY(operation, type, column)
#include "visitors/stored_classes.def"

private:
    void number(const char* name, double value, const char* unit = "")
    {
        parameters.push_back({{"name", name}, {"value", value}, {"unit", unit}});
    }
    void word(const char* name, const char* value) { parameters.push_back({{"name", name}, {"value", value}}); }
    /// \param entry  what one of a table is of: "pair"
    void table(const char* name, const char* entry, std::size_t count)
    {
        parameters.push_back({{"name", name}, {"entry", entry}, {"count", count}});
    }
    void rollingFriction(const CRollingFrictionParamData& data)
    {
        if (data.hasRollingFrictionOption())
            word("rolling friction", data.enableRollingFriction ? "on both sides" : "on the first side");
    }

    /// What is no parameter record.
    template <class T>
    void describe(const T&)
    {}
    void describe(const CHertzMindlinNoSlipContactModelParamData& data) { rollingFriction(data); }
    void describe(const CLinearSpringContactModelParamData& data)
    {
        number("characteristic velocity", data.characteristicVelocity, "m/s");
        rollingFriction(data);
    }
    void describe(const CHeatConductionModelParamData& data)
    {
        table("thermal conductivity", "particle type", data.conductivities.entries.size());
    }
    void describe(const CArchardContactModelParamData& data)
    {
        table("wear constant", "geometry group", data.wearConstants.entries.size());
        rollingFriction(data);
    }
    void describe(const CCohesionContactModelParamData& data)
    {
        table("energy density", "pair", data.energyDensity.entries.size());
    }
    void describe(const CJkrContactModelParamData& data)
    {
        table("surface energy", "pair", data.surfaceEnergy.entries.size());
        rollingFriction(data);
    }
    void describe(const CHystereticContactModelParamData& data)
    {
        table("damping and stiffness", "pair", data.interactions.entries.size());
        table("yield strength", "name", data.yields.entries.size());
        rollingFriction(data);
    }
    void describe(const CEdinburghCohesionContactModelParamData& data)
    {
        table("adhesion", "pair", data.pairs.entries.size());
        rollingFriction(data);
    }
    void describe(const CLeedsAdhesionContactModelParamData& data)
    {
        table("adhesion", "pair", data.pairs.entries.size());
        rollingFriction(data);
    }
    void describe(const CParallelBondContactModelParamData& data)
    {
        const char* const states[] = {"not begun", "under way", "done"};
        table("bond", "pair", data.bondParameters.entries.size());
        number("formed from", data.formationStartTime, "s");
        number("formed until", data.formationEndTime, "s");
        word("formation", data.state <= eBondsDone ? states[data.state] : "of an unknown state");
        word("torque feedback", data.torqueFeedback ? "on" : "off");
        rollingFriction(data);
    }
    void describe(const CTribochargingContactModelParamData& data) { number("alpha", data.alpha); }
    void describe(const CMovingPlaneContactModelParamData& data)
    {
        std::size_t motions = 0;
        for (const auto& [index, plane] : data.planes)
            motions += plane.motions.size();
        table("start and end point", "plane", data.planes.size());
        table("velocity", "motion", motions);
    }
    void describe(const CElectrostaticsExtForceParamData& data)
    {
        number("screening distance", data.screeningDistance, "smallest particle radii");
    }
    void describe(const CHeatConductionExtForceParamData& data)
    {
        table("heat capacity", "particle type", data.heatCapacities.entries.size());
    }
};

/// Adds where the library of a plug-in is, if it is anywhere.
void addLibrary(Json& object, const SPluginKind& kind, const QString& name)
{
    const SUserLibrary library = userLibrary(kind, name);
    object["library"] = library.path.isEmpty() ? Json() : Json(utf8(library.path));
    object["libraryNote"] = library.words;
}

template <class TPhantom, class TModel>
Json modelObject(const TModel& model, const SPluginKind& kind)
{
    CParameterCollector collector;
    model.write(collector);
    const bool isKnown = dynamic_cast<const TPhantom*>(&model) == nullptr;
    Json object{{"name", utf8(model.modelName())},
                {"source", model.source},
                {"known", isKnown},
                {"parameters", collector.parameters}};
    if (!isKnown && model.source != eBuiltInModel)
        addLibrary(object, kind, model.modelName());
    return object;
}

std::string parameterText(const Json& parameter)
{
    const std::string name = text(parameter["name"]);
    if (parameter.contains("entry"))
        return name + " of " + countText(parameter["count"].get<quint64>(), text(parameter["entry"]));
    if (!parameter.contains("unit"))
        return name + " " + text(parameter["value"]);
    const std::string unit = text(parameter["unit"]);
    return name + " " + shortNumber(parameter["value"].get<double>()) + (unit.empty() ? "" : " " + unit);
}

void printModels(const Json& models, const std::string& noun, const std::string& where)
{
    CTable table;
    for (const Json& model : models) {
        std::string rest;
        if (model.contains("libraryNote"))
            rest = "of a plug-in; " + shown(model["libraryNote"]);
        else if (!model["known"].get<bool>())
            rest = "not known here, kept by its name";
        for (const Json& parameter : model["parameters"])
            rest += (rest.empty() ? "" : ", ") + parameterText(parameter);
        table.row(shown(model["name"]), rest.empty() ? "no parameters" : rest);
    }
    table.printUnlessEmpty(countText(table.size(), noun) + where);
}

} // namespace

Json physicsObject(const CPhysicsModels& physics)
{
    const auto list = [](const auto& models, auto describe, const SPluginKind& kind) {
        Json objects = Json::array();
        for (const auto& model : models)
            objects.push_back(describe(*model, kind));
        return objects;
    };
    const auto describeModel = modelObject<CContactModelPhantom, IContactModel>;
    const auto describeForce = modelObject<CExternalForcePhantom, IExternalForce>;
    return {{"sphereSphereModels", list(physics.sphereSphereModels, describeModel, contactModelPlugins)},
            {"sphereGeometryModels", list(physics.sphereGeometryModels, describeModel, contactModelPlugins)},
            {"externalForces", list(physics.externalForces, describeForce, externalForcePlugins)}};
}

Json pluginFactoryList(const CPluginParticleFactoryList& factories)
{
    Json list = Json::array();
    for (const SPluginFactoryEntry& entry : factories.entries()) {
        list.push_back({{"name", utf8(entry.name)}, {"libraryName", utf8(entry.library)}});
        addLibrary(list.back(), particleFactoryPlugins, entry.library);
    }
    return list;
}

void printPhysics(const Json& deck)
{
    const Json& physics = deck["physics"];
    printModels(physics["sphereSphereModels"], "contact model", " between particles, in the order of the chain");
    printModels(physics["sphereGeometryModels"], "contact model",
                " between particles and geometry, in the order of the chain");
    printModels(physics["externalForces"], "external force", "");
    CTable factories;
    for (const Json& factory : deck["pluginFactories"])
        factories.row(shown(factory["name"]),
                      "of the library " + shown(factory["libraryName"]) + "; " + shown(factory["libraryNote"]));
    factories.printUnlessEmpty(countText(factories.size(), "plug-in factory", "plug-in factories"));
}

} // namespace NBrenmark
