// Walks through contact states: each is one call of a law.
#include "brenmark/law/states.h"

#include "brenmark/failure.h"
#include "brenmark/law/json_members.h"
#include "brenmark/law/parameters_from_json.h"
#include "brenmark/law/property_set.h"

#include "materials/interactions.h"
#include "materials/materials.h"
#include "physics/bond_table.h"
#include "physics/electrostatics.h"
#include "physics/model_registry.h"
#include "physics/parallel_bond.h"
#include "physics/physics_owner.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace NBrenmark {

namespace {

// ---------------------------------------------------------------- what a state is made of

/// The one bond that a state may have.
class COneBond : public IBondTable
{
public:
    bool find(const BondEnds& /*ends*/, SBondRow& row) override
    {
        if (!isThere)
            return false;
        row = {&state, &brokenAt, &parameters, &normalForce, &tangentialForce, &normalMoment, &tangentialMoment};
        return true;
    }
    bool make(const BondEnds& ends, const CBondParameters& beam, SBondRow& row) override
    {
        *this = COneBond();
        isThere = true;
        parameters = &beam;
        return find(ends, row);
    }

    bool isThere = false;
    quint32 state = 1;
    double brokenAt = 0.0;
    const CBondParameters* parameters = nullptr;
    C3DVector normalForce, tangentialForce, normalMoment, tangentialMoment;
};

/// A deck of nothing but radii.
class CRadii : public IPhysicsOwner
{
public:
    explicit CRadii(const std::vector<double>& radii) : radii(radii) {}
    void physicsChanged() override {}
    bool radiusRange(double& min, double& max, bool /*physical*/) const override
    {
        if (radii.empty())
            return false;
        const auto [least, greatest] = std::minmax_element(radii.begin(), radii.end());
        min = *least;
        max = *greatest;
        return true;
    }
    std::vector<std::string> materialNames() const override { return {}; }

private:
    std::vector<double> radii;
};

// ---------------------------------------------------------------- to and from JSON

void define(CPropertySet& set, const PropertyValues& values)
{
    for (const auto& [name, elements] : values)
        set.define(name, static_cast<unsigned int>(elements.size()));
}

Json jsonValues(const PropertyValues& values)
{
    Json json = Json::object();
    for (const auto& [name, elements] : values)
        json[name] = elements;
    return json;
}

SContactElement elementFrom(const CJsonMembers& json)
{
    SContactElement e;
    e.kind = json.count("kind");
    e.id = json.count("id");
    e.name = json.text("name");
    e.key1 = json.count("key1");
    e.key2 = json.count("key2");
    e.mass = json.number("mass");
    e.contactRadius = json.number("contactRadius");
    e.physicalRadius = json.number("physicalRadius");
    e.position = C3DPoint(json.vector("position"));
    e.angularVelocity = json.vector("angularVelocity");
    e.contactVector = json.vector("contactVector");
    e.centreOfMass = C3DPoint(json.vector("centreOfMass"));
    e.area = json.number("area");
    e.isExempt = json.flag("exempt");
    return e;
}

CMaterial materialFrom(const CJsonMembers& json)
{
    const CMaterial unset;
    return {json.text("name"),
            json.number("poissonsRatio", unset.poissonsRatio),
            json.number("shearModulus", unset.shearModulus),
            json.number("density", unset.density),
            json.number("workFunction", unset.workFunction),
            unset.type};
}

CInteraction interactionFrom(const CJsonMembers& json)
{
    CInteraction interaction;
    interaction.restitution = json.number("restitution", interaction.restitution);
    interaction.staticFriction = json.number("staticFriction", interaction.staticFriction);
    interaction.rollingFriction = json.number("rollingFriction", interaction.rollingFriction);
    return interaction;
}

/// Names each vector of the results in its order.
template <class TResults, class TVisit>
void forEachVector(TResults& results, const TVisit& visit)
{
    visit("normalForce", results.normalForce);
    visit("normalDamping", results.normalDamping);
    visit("tangentialForce", results.tangentialForce);
    visit("tangentialDamping", results.tangentialDamping);
    visit("torque1", results.torque1);
    visit("rollingTorque1", results.rollingTorque1);
    visit("torque2", results.torque2);
    visit("rollingTorque2", results.rollingTorque2);
}

Json refusal(const std::string& text) { return {{"result", false}, {"error", text}}; }

// ---------------------------------------------------------------- contacts

/// What one contact leaves for a state that goes on from it.
struct SHistory
{
    std::string modelName;
    std::unique_ptr<IContactModel> model;
    C3DVector tangentialOverlap;
    PropertyValues contactProperties;
    COneBond bond;
};

void takeBond(COneBond& bond, const CJsonMembers& json, bool isThere)
{
    bond = COneBond();
    bond.isThere = isThere;
    if (!isThere)
        return;
    bond.state = json.count("intact", 1);
    bond.brokenAt = json.number("brokenAt");
    bond.normalForce = json.vector("normalForce");
    bond.tangentialForce = json.vector("tangentialForce");
    bond.normalMoment = json.vector("normalMoment");
    bond.tangentialMoment = json.vector("tangentialMoment");
}

Json jsonBond(const COneBond& bond)
{
    if (!bond.isThere)
        return nullptr;
    return {{"intact", bond.state},
            {"brokenAt", bond.brokenAt},
            {"normalForce", jsonVector(bond.normalForce)},
            {"tangentialForce", jsonVector(bond.tangentialForce)},
            {"normalMoment", jsonVector(bond.normalMoment)},
            {"tangentialMoment", jsonVector(bond.tangentialMoment)}};
}

Json contactResult(const CJsonMembers& json, SHistory& history)
{
    const std::string name = json.text("model");
    const quint32 modelType = json.count("modelType");
    const bool goesOn = json.flag("continue") && history.model != nullptr && history.modelName == name &&
                        history.model->modelType == modelType;
    if (!goesOn) {
        history = SHistory();
        history.modelName = name;
        history.model = createContactModel(QString::fromStdString(name), modelType, eBuiltInModel);
    }
    if (history.model == nullptr)
        return refusal("there is no contact model \"" + name + "\"");
    IContactModel& model = *history.model;
    if (!goesOn || json.has("parameters"))
        setParameters(model, json.object("parameters"));

    const CMaterial material1 = materialFrom(json.object("material1"));
    const CMaterial material2 = materialFrom(json.object("material2"));
    const CInteraction interaction = interactionFrom(json.object("interaction"));
    SContact contact;
    contact.time = json.number("time");
    contact.timeStep = json.number("timeStep");
    contact.element1 = elementFrom(json.object("element1"));
    contact.element2 = elementFrom(json.object("element2"));
    contact.material1 = &material1;
    contact.material2 = &material2;
    contact.interaction = &interaction;
    contact.velocity1 = json.vector("velocity1");
    contact.velocity2 = json.vector("velocity2");
    contact.contactPoint = C3DPoint(json.vector("contactPoint"));
    contact.normalOverlap = json.number("normalOverlap");
    contact.tangentialOverlap = goesOn ? history.tangentialOverlap : json.vector("tangentialOverlap");
    const CJsonMembers before = json.object("results");
    forEachVector(contact.results, [&](const char* vector, C3DVector& value) { value = before.vector(vector); });
    if (!goesOn)
        takeBond(history.bond, json.object("bond"), !json.isNull("bond"));
    if (const auto* const bonding = dynamic_cast<CParallelBondContactModel*>(&model)) {
        contact.bonds = &history.bond;
        history.bond.parameters = bonding->parameters.bondParameters.find(material1.name, material2.name);
    }

    const bool onGeometry = contact.element2.isGeometry();
    const PropertyValues values1 = json.object("element1").arraysByName("properties");
    const PropertyValues values2 = json.object("element2").arraysByName("properties");
    const PropertyValues ofContact = goesOn ? history.contactProperties : json.arraysByName("contactProperties");
    CPropertySet particles(eParticleOwner), geometry(eGeometryOwner), contacts(eContactOwner);
    CPropertySet& second = onGeometry ? geometry : particles;
    define(particles, values1);
    define(second, values2);
    define(contacts, ofContact);
    for (CPropertySet* const set : {&particles, &geometry, &contacts}) {
        set->makeRows(2);
        model.managerChanged(set->manager, 0);
    }
    particles.set(0, values1);
    second.set(1, values2);
    contacts.set(0, ofContact);
    if (!values1.empty())
        contact.element1.properties = particles.item(0);
    if (!values2.empty())
        contact.element2.properties = second.item(1);
    contact.properties = contacts.item(0);

    model.starting(1);
    Json result{{"result", model.calculateForce(contact)}};
    model.stopping();
    forEachVector(contact.results,
                  [&](const char* vector, const C3DVector& value) { result[vector] = jsonVector(value); });
    result["tangentialOverlap"] = jsonVector(contact.tangentialOverlap);
    result["velocity1"] = jsonVector(contact.velocity1);
    result["velocity2"] = jsonVector(contact.velocity2);
    const auto changesOf = [](const CPropertySet& set, quint32 row, const PropertyValues& given) {
        return given.empty() ? Json::object() : jsonValues(set.changed(row));
    };
    result["changes"] = {{"element1", changesOf(particles, 0, values1)},
                         {"element2", changesOf(second, 1, values2)},
                         {"contact", changesOf(contacts, 0, ofContact)}};
    result["bond"] = jsonBond(history.bond);
    if (const auto* const bonding = dynamic_cast<CParallelBondContactModel*>(&model))
        result["state"] = bonding->parameters.state;
    history.tangentialOverlap = contact.tangentialOverlap;
    history.contactProperties = contacts.sum(0);
    return result;
}

// ---------------------------------------------------------------- external forces

Json forceResult(const CJsonMembers& json)
{
    const std::string name = json.text("force");
    const CRadii deck(json.numbers("radii"));
    const std::unique_ptr<IExternalForce> force =
        createExternalForce(QString::fromStdString(name), eBuiltInModel, &deck);
    if (force == nullptr)
        return refusal("there is no external force \"" + name + "\"");
    setParameters(*force, json.object("parameters"));
    if (auto* const charges = dynamic_cast<CElectrostaticsExternalForce*>(force.get()))
        charges->parameters.deck = &deck;

    const CJsonMembers given = json.object("particle");
    const PropertyValues values = given.arraysByName("properties");
    CPropertySet particles(eParticleOwner);
    define(particles, values);
    particles.makeRows(1);
    particles.set(0, values);
    force->managerChanged(particles.manager, 0);

    SParticleForce particle;
    particle.name = given.text("name");
    particle.mass = given.number("mass");
    particle.timeStep = json.number("timeStep");
    particle.properties = particles.item(0);
    force->starting();
    const bool isDone = force->calculateForce(particle);
    force->stopping();
    Json result{{"result", isDone},
                {"force",
                 {particle.force.x, particle.force.y, particle.force.z, particle.torque.x, particle.torque.y,
                  particle.torque.z}},
                {"changes", {{"particle", jsonValues(particles.changed(0))}}}};
    if (const auto* const charges = dynamic_cast<CElectrostaticsExternalForce*>(force.get());
        charges && json.has("radii"))
        result["cutoff"] = charges->cutoff;
    return result;
}

} // namespace

Json resultsOf(const Json& states)
{
    if (!states.is_array())
        throw CFailure(eExitUsage, "the states aren't a JSON array", "Write them in square brackets.");
    Json results = Json::array();
    SHistory history;
    for (const Json& state : states) {
        const CJsonMembers json(state, "state " + std::to_string(results.size()) + ":");
        results.push_back(json.has("force") ? forceResult(json) : contactResult(json, history));
    }
    return results;
}

} // namespace NBrenmark
