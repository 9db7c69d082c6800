// Names the fields of geometry that timesteps change, in one order for saving and putting back.
#include "model/geometry_state.h"

#include "model/factories/dynamic_particle_factory.h"
#include "model/factories/factory_position.h"
#include "model/factories/factory_size.h"
#include "model/factories/factory_type.h"
#include "model/factories/particle_factory_list.h"
#include "model/factories/static_particle_factory.h"
#include "model/geometry/geometry_group.h"
#include "model/geometry_groups.h"
#include "model/kinematics/conveyor_translation.h"
#include "model/kinematics/linear_rotation.h"
#include "model/kinematics/sinusoidal_rotation.h"
#include "model/kinematics/sinusoidal_translation.h"

#include <utility>

namespace NBrenmark {

namespace {

/// The type of an object, const as the one that it is looked for in.
template <class TKind, class TObject>
auto* as(TObject* object)
{
    using Kind = std::conditional_t<std::is_const_v<TObject>, const TKind, TKind>;
    return dynamic_cast<Kind*>(object);
}

// Each of these hands visit the fields that timesteps change, always in the same order.

template <class TGroup, class TVisit>
void forEachOfBody(TGroup& g, TVisit&& visit)
{
    visit(g.time);
    visit(g.translation);
    visit(g.velocity);
    visit(g.resetVelocities);
    visit(g.centreOfMass);
    visit(g.originalCentreOfMass);
    visit(g.pointOfAction);
    visit(g.originalPointOfAction);
    visit(g.motionHistory);
    visit(g.dataMask);
    visit(g.triangleForces);
    visit(g.electrostatic.charges);
}

template <class TGroup, class TVisit>
void forEachOfProperties(TGroup& g, TVisit&& visit)
{
    for (const auto& list : g.customProperties.lists)
        visit(list->values);
}

template <class TMotion, class TVisit>
void forEachOfMotion(TMotion* motion, TVisit&& visit)
{
    if (auto* const rotation = as<CRotation>(motion))
        visit(rotation->pointOfAction);
    if (auto* const linear = as<CLinearRotation>(motion)) {
        visit(linear->angularVelocity);
        visit(linear->angularAcceleration);
    }
    if (auto* const swing = as<CSinusoidalTranslation>(motion))
        visit(swing->sinusoid.displacement);
    if (auto* const swing = as<CSinusoidalRotation>(motion))
        visit(swing->sinusoid.displacement);
    if (auto* const belt = as<CConveyorTranslation>(motion))
        visit(belt->conveyorTransform);
}

template <class TFactory, class TVisit>
void forEachOfFactory(TFactory* factory, TVisit&& visit)
{
    visit(factory->creationCount);
    visit(factory->counters);
    visit(factory->accounting);
    visit(factory->typeAccounting);
    if (auto* const dynamic = as<CDynamicParticleFactory>(factory))
        visit(dynamic->createdSinceRateChange);
    if (auto* const whole = as<CStaticParticleFactory>(factory))
        visit(whole->completed);
    for (const auto& entry : factory->sizes)
        if (auto* const bands = as<CUserDefinedFactorySize>(entry.second.get()))
            visit(bands->bandAccounting);
    if (auto* const turns = as<CBinaryFactoryType>(factory->type.get()))
        visit(turns->next);
    if (auto* const walk = as<CRandomFactoryPosition>(factory->position.get())) {
        visit(walk->seedPosition);
        visit(walk->seedVector);
    }
    if (auto* const lattice = as<C3DLattice>(factory->position.get())) {
        visit(lattice->cursor0);
        visit(lattice->cursor1);
        visit(lattice->cursor2);
        visit(lattice->cursor3);
    }
}

template <class TGroup, class TVisit>
void forEachOfMotions(TGroup& g, TVisit&& visit)
{
    for (const auto& motion : g.kinematics.actions)
        forEachOfMotion(motion.get(), visit);
}

template <class TGroup, class TVisit>
void forEachOfFactories(TGroup& g, TVisit&& visit)
{
    for (const auto& factory : g.factories->factories)
        forEachOfFactory(factory.get(), visit);
}

// ---------------------------------------------------------------- what is done with them

auto keepIn(std::vector<std::any>& fields)
{
    return [&fields](const auto& field) { fields.emplace_back(field); };
}

/// Runs body on a field of the kept ones and the one that it belongs to. Old decks store some lists anew in each
/// timestep: a field of another kind than the kept one isn't of it.
template <class TFields, class TBody>
auto inPairs(TFields& fields, TBody&& body)
{
    return [&fields, body, next = std::size_t(0)](auto& field) mutable {
        if (next < fields.size())
            if (auto* const kept = std::any_cast<std::decay_t<decltype(field)>>(&fields[next++]))
                body(*kept, field);
    };
}

constexpr auto copyOut = [](const auto& kept, auto& field) { field = kept; };
constexpr auto swapBoth = [](auto& kept, auto& field) { std::swap(kept, field); };

/// Of arrays that have their length from elsewhere.
template <class TBody>
auto ofOneLength(TBody body)
{
    return [body](auto& kept, auto& field) {
        if (kept.size() == field.size())
            body(kept, field);
    };
}

} // namespace

CGeometryState::CGeometryState(const CGeometryGroup& group)
    : isStatic(group.isStatic),
      transform(group.transform),
      bounds(group.bounds),
      enclosedMagnitude(group.enclosedMagnitude),
      surfaceMagnitude(group.surfaceMagnitude)
{
    forEachOfBody(group, keepIn(body));
    forEachOfProperties(group, keepIn(properties));
    forEachOfMotions(group, keepIn(motions));
    forEachOfFactories(group, keepIn(factories));
}

void CGeometryState::restore(CGeometryGroup& group) const
{
    if (isStatic) {
        group.standStill();
        group.bounds = bounds;
        group.enclosedMagnitude = enclosedMagnitude;
        group.surfaceMagnitude = surfaceMagnitude;
    }
    forEachOfBody(group, inPairs(body, copyOut));
    forEachOfProperties(group, inPairs(properties, ofOneLength(copyOut)));
    forEachOfMotions(group, inPairs(motions, copyOut));
    forEachOfFactories(group, inPairs(factories, copyOut));
}

void CGeometryState::exchange(CGeometryGroup& group)
{
    if (!movedCoords.empty()) {
        group.coords = std::move(movedCoords);
        movedCoords.clear();
    }
    else if (isStatic && !group.isStatic) {
        movedCoords = std::move(group.coords);
        group.coords = group.originalCoords;
    }
    std::swap(isStatic, group.isStatic);
    std::swap(transform, group.transform);
    std::swap(bounds, group.bounds);
    std::swap(enclosedMagnitude, group.enclosedMagnitude);
    std::swap(surfaceMagnitude, group.surfaceMagnitude);
    forEachOfBody(group, inPairs(body, swapBoth));
    forEachOfProperties(group, inPairs(properties, ofOneLength(swapBoth)));
    forEachOfMotions(group, inPairs(motions, swapBoth));
    forEachOfFactories(group, inPairs(factories, swapBoth));
}

COwnGeometryState::COwnGeometryState(GeometryGroups& groups) : groups(groups) { groups.exchangeState(); }
COwnGeometryState::~COwnGeometryState() { groups.exchangeState(); }

} // namespace NBrenmark
