// Two things of a deck, pressed together and drawn apart.
#include "brenmark/law/curve.h"

#include "brenmark/failure.h"
#include "brenmark/law/property_set.h"
#include "brenmark/terminal.h"

#include "model/creator_data.h"
#include "model/geometry/geometry_group.h"
#include "physics/parameter_records.h"
#include "physics/phantoms.h"
#include "units/unit_table.h"

#include <algorithm>
#include <cmath>

namespace NBrenmark {

namespace {

/// Of what has no end: a wall's radius and mass, which leave those of the particle as R* and m*.
constexpr double endless = 1e30;

// ---------------------------------------------------------------- names

/// A particle type or a geometry group; one of the two isn't null.
struct SNamed
{
    const CParticleType* type = nullptr;
    const CGeometryGroup* group = nullptr;

    std::string name() const { return type != nullptr ? type->name : group->name; }
    QString materialName() const { return type != nullptr ? type->materialName : group->materialName; }
};

std::string listed(const char* kind, const std::vector<std::string>& names)
{
    std::string list;
    for (const std::string& name : names)
        list += (list.empty() ? "" : ", ") + oneLine(name);
    return std::string(kind) + (list.empty() ? "none" : list);
}

SNamed named(const CCreatorData& deck, const std::string& argument)
{
    const std::string typePrefix = "type:", groupPrefix = "geometry:";
    const bool isType = argument.rfind(typePrefix, 0) == 0, isGroup = argument.rfind(groupPrefix, 0) == 0;
    const std::string name = argument.substr(isType ? typePrefix.size() : isGroup ? groupPrefix.size() : 0);
    std::vector<std::string> types, groups;
    SNamed found;
    for (const auto& type : deck.particleTypes.types) {
        types.push_back(type->name);
        if (!isGroup && types.back() == name && found.type == nullptr)
            found.type = type.get();
    }
    for (const CGeometryGroup* const group : deck.geometryGroups.groups())
        if (group != nullptr) {
            groups.push_back(group->name);
            if (!isType && groups.back() == name && found.group == nullptr)
                found.group = group;
        }
    if (found.type != nullptr && found.group != nullptr)
        throw CFailure(eExitUsage, oneLine(name) + ": is a particle type and a geometry group",
                       "Write type:" + name + " or geometry:" + name + ".");
    if (found.type == nullptr && found.group == nullptr)
        throw CFailure(eExitUsage, oneLine(argument) + ": the deck has no such particle type or geometry group",
                       listed("Particle types: ", types) + ". " + listed("Geometry groups: ", groups) + ".");
    return found;
}

const CMaterial& materialOf(const CCreatorData& deck, const SNamed& thing)
{
    const CMaterial* const material = deck.materials.find(thing.materialName());
    if (material == nullptr)
        throw CFailure(eExitSource,
                       oneLine(thing.name()) + ": its material " + oneLine(utf8(thing.materialName())) +
                           " isn't in the deck",
                       "Choose another pair.");
    return *material;
}

// ---------------------------------------------------------------- what the models need

/// The entry that a model's table lacks for a pair; empty for none.
std::string missingEntry(const IContactModel& model, const SContact& contact)
{
    const std::string& a = contact.material1->name;
    const std::string& b = contact.material2->name;
    const auto lacks = [&](const auto& table) { return table.find(a, b) == nullptr; };
    std::string pair = oneLine(a) + " and " + oneLine(b);
    if (const auto* m = dynamic_cast<const CCohesionContactModel*>(&model))
        return lacks(m->parameters.energyDensity) ? pair : "";
    if (const auto* m = dynamic_cast<const CJkrContactModel*>(&model))
        return lacks(m->parameters.surfaceEnergy) ? pair : "";
    if (const auto* m = dynamic_cast<const CEdinburghCohesionContactModel*>(&model))
        return lacks(m->parameters.pairs) ? pair : "";
    if (const auto* m = dynamic_cast<const CLeedsAdhesionContactModel*>(&model))
        return lacks(m->parameters.pairs) ? pair : "";
    if (const auto* m = dynamic_cast<const CHystereticContactModel*>(&model)) {
        if (lacks(m->parameters.interactions))
            return pair;
        for (const SContactElement* const element : {&contact.element1, &contact.element2})
            if (m->parameters.yields.entries.count(element->name) == 0)
                return "the yield strength of " + oneLine(element->name);
    }
    return std::string();
}

/// Models of the chain as they are walked through. \throws CFailure  one that can't be
std::vector<IContactModel*> walkedModels(const CPhysicsModels::Chain& chain, const std::string& only)
{
    std::vector<IContactModel*> walked;
    std::vector<std::string> names;
    for (const auto& model : chain) {
        names.push_back(utf8(model->modelName()));
        if (!only.empty() && names.back() != only)
            continue;
        if (dynamic_cast<const CContactModelPhantom*>(model.get()) != nullptr)
            throw CFailure(eExitSource, oneLine(names.back()) + ": isn't a built-in contact model",
                           "Its force can't be calculated here. --only MODEL takes one of the others.");
        walked.push_back(model.get());
    }
    if (walked.empty() && !only.empty())
        throw CFailure(eExitUsage, oneLine(only) + ": isn't in the chain of this pair",
                       listed("The chain holds: ", names) + ".");
    return walked;
}

// ---------------------------------------------------------------- the contact

SContactElement particleFrom(const CParticleType& type, const CMaterial& material)
{
    SContactElement e;
    e.name = type.name;
    for (const CSphere& sphere : type.spheres)
        if (sphere.physicalRadius > e.physicalRadius) {
            e.physicalRadius = sphere.physicalRadius;
            e.contactRadius = sphere.contactRadius;
        }
    if (e.physicalRadius <= 0.0)
        throw CFailure(eExitSource, oneLine(e.name) + ": has no sphere with a radius", "Choose another pair.");
    constexpr double pi = 3.141592653589793;
    e.mass = type.rawMass > 0.0 ? type.rawMass : material.density * 4.0 / 3.0 * pi * std::pow(e.physicalRadius, 3);
    return e;
}

SContactElement wallFrom(const CGeometryGroup& group)
{
    SContactElement e;
    e.kind = eGeometryElement;
    e.name = group.name;
    e.mass = e.physicalRadius = e.contactRadius = endless;
    e.area = group.triangleNodes.empty() ? 1.0 : group.surfaceArea() / static_cast<double>(group.triangleNodes.size());
    return e;
}

/// Puts the two along x so that they overlap, the first at the origin.
void place(SContact& contact, double overlap, double velocity)
{
    SContactElement& first = contact.element1;
    SContactElement& second = contact.element2;
    const double distance =
        second.isGeometry() ? first.physicalRadius - overlap : first.physicalRadius + second.physicalRadius - overlap;
    const double touch = second.isGeometry() ? distance : first.physicalRadius - overlap / 2.0;
    second.position = second.centreOfMass = C3DPoint(distance, 0, 0);
    contact.contactPoint = C3DPoint(touch, 0, 0);
    first.contactVector = C3DVector(touch, 0, 0);
    second.contactVector = C3DVector(touch - distance, 0, 0);
    contact.normalOverlap = overlap;
    contact.velocity1 = C3DVector(velocity, 0, 0);
    contact.velocity2 = C3DVector();
}

void add(SContactResults& sum, const SContactResults& more)
{
    sum.normalForce += more.normalForce;
    sum.normalDamping += more.normalDamping;
    sum.tangentialForce += more.tangentialForce;
    sum.tangentialDamping += more.tangentialDamping;
    sum.torque1 += more.torque1;
    sum.rollingTorque1 += more.rollingTorque1;
    sum.torque2 += more.torque2;
    sum.rollingTorque2 += more.rollingTorque2;
}

/// The chain in its order: each model begins with nothing, and the last one, which only adds up, sees the sum.
SContactResults resultsOfChain(const std::vector<IContactModel*>& models, SContact contact)
{
    SContactResults sum;
    for (IContactModel* const model : models) {
        const bool onlyLooks = model->modelName() == QLatin1String(lastInChain);
        contact.results = onlyLooks ? sum : SContactResults();
        model->calculateForce(contact);
        if (!onlyLooks)
            add(sum, contact.results);
    }
    return sum;
}

// ---------------------------------------------------------------- what the models keep

/// Of base values; empty for what has none.
std::string baseUnitOf(unsigned int quantity)
{
    const std::vector<SUnit>& units = quantityOf(quantity).units;
    return units.empty() ? "" : units.front().name;
}

/// The properties of the contact or of one of the two.
struct SKept
{
    const CPropertySet& set;
    quint32 row;
    std::string owner; ///< "Ball: "

    void appendColumns(std::vector<SCurveColumn>& columns) const
    {
        for (const auto& [name, values] : set.sum(row))
            for (std::size_t i = 0; i < values.size(); ++i)
                columns.push_back({owner + name + (values.size() == 1 ? "" : ' ' + std::to_string(i + 1)),
                                   baseUnitOf(set.quantityOf(name))});
    }
    void appendValues(std::vector<double>& all) const
    {
        for (const auto& [name, values] : set.sum(row))
            all.insert(all.end(), values.begin(), values.end());
    }
};

} // namespace

SCurve curveOf(const CCreatorData& deck, const SCurveOptions& options)
{
    SNamed first = named(deck, options.first), second = named(deck, options.second);
    if (first.type == nullptr)
        std::swap(first, second);
    if (first.type == nullptr)
        throw CFailure(eExitUsage, oneLine(options.first) + " and " + oneLine(options.second) + ": are both geometry",
                       "Name a particle type and what it touches.");
    const bool onGeometry = second.group != nullptr;
    const CMaterial& material1 = materialOf(deck, first);
    const CMaterial& material2 = materialOf(deck, second);
    const CInteraction* const interaction = deck.interactions.find(first.materialName(), second.materialName());
    if (interaction == nullptr)
        throw CFailure(eExitSource,
                       oneLine(material1.name) + " and " + oneLine(material2.name) +
                           ": the deck has no interaction of them",
                       "Choose another pair.");

    SContact contact;
    contact.element1 = particleFrom(*first.type, material1);
    contact.element2 = onGeometry ? wallFrom(*second.group) : particleFrom(*second.type, material2);
    contact.material1 = &material1;
    contact.material2 = &material2;
    contact.interaction = interaction;

    const CPhysicsModels& physics = deck.physicsModels;
    const std::vector<IContactModel*> models =
        walkedModels(onGeometry ? physics.sphereGeometryModels : physics.sphereSphereModels, options.only);
    SCurve curve;
    curve.title = first.name() + (onGeometry ? " on " : " and ") + second.name();
    CPropertySet particles(eParticleOwner), geometry(eGeometryOwner), contacts(eContactOwner);
    for (IContactModel* const model : models) {
        curve.models.push_back(utf8(model->modelName()));
        if (const std::string entry = missingEntry(*model, contact); !entry.empty())
            throw CFailure(eExitSource, curve.models.back() + ": the deck has no parameters for " + entry,
                           "Choose another pair, or --only with another model of the chain.");
        for (CPropertySet* const set : {&particles, &geometry, &contacts})
            for (const auto& property : model->requiredProperties(set->manager.managerType))
                set->define(property->name, property->numberOfElements, property->unitsType);
    }
    for (CPropertySet* const set : {&particles, &geometry, &contacts}) {
        set->makeRows(2);
        for (IContactModel* const model : models)
            model->managerChanged(set->manager, 0);
    }
    contact.element1.properties = particles.item(0);
    contact.element2.properties = onGeometry ? geometry.item(1) : particles.item(1);
    contact.properties = contacts.item(0);
    const bool areAlike = first.name() == second.name();
    const SKept allKept[] = {
        {contacts, 0, ""},
        {particles, 0, first.name() + (areAlike ? " 1: " : ": ")},
        {onGeometry ? geometry : particles, 1, second.name() + (areAlike ? " 2: " : ": ")},
    };
    curve.columns = {{"overlap", "m"}, {"normal force", "N"}, {"tangential force", "N"}, {"torque", "N m"}};
    for (const SKept& kept : allKept)
        kept.appendColumns(curve.columns);

    std::vector<double> overlaps;
    for (quint32 i = 0; i < options.count; ++i)
        overlaps.push_back(options.from + (options.to - options.from) * i / (options.count - 1));
    curve.unloading = overlaps.size();
    if (options.unloads)
        overlaps.insert(overlaps.end(), overlaps.rbegin() + 1, overlaps.rend());
    contact.timeStep = std::abs(options.to - options.from) / (options.count - 1) / options.speed;
    for (IContactModel* const model : models)
        model->starting(1);
    for (std::size_t i = 0; i < overlaps.size(); ++i) {
        const bool shrinks = (i >= curve.unloading) == (options.to > options.from);
        place(contact, overlaps[i], shrinks ? -options.speed : options.speed);
        contact.time += contact.timeStep;
        const SContactResults results = resultsOfChain(models, contact);
        for (CPropertySet* const set : {&particles, &geometry, &contacts})
            set->apply();
        std::vector<double> point{overlaps[i], 0.0 - results.normalForce.x, results.tangentialForce.length(),
                                  results.torque1.length()};
        for (const SKept& kept : allKept)
            kept.appendValues(point);
        curve.points.push_back(std::move(point));
    }
    for (IContactModel* const model : models)
        model->stopping();
    return curve;
}

} // namespace NBrenmark
