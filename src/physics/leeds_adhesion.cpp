// Elastic-plastic adhesion in straight branches.
#include "physics/leeds_adhesion.h"

#include "materials/interactions.h"
#include "materials/materials.h"
#include "physics/contact_mechanics.h"

#include <cmath>

namespace NBrenmark {

using namespace NContactMechanics;

enum ELeedsProperties // rows of the table
{
    eMaximumOverlap,
    eIsPlastic,
    eIsCohesive,
    eIsZero
};

/// The model's own pi, in ten digits.
constexpr double shortPi = 3.141592654;

/// The branches of a contact whose greatest overlap is known.
struct SBranches
{
    SBranches(const SLeedsPair& pair, double greatest, bool onGeometry)
        : pair(pair),
          plastic(((pair.elasticStiffness - pair.plasticStiffness) * greatest - pair.initialAdhesiveForce) /
                  pair.elasticStiffness),
          cohesive((pair.elasticStiffness * plastic + pair.initialAdhesivePlasticForce) /
                   (pair.plasticAdhesiveStiffness + pair.elasticStiffness)),
          end(onGeometry ? ((pair.elasticStiffness - pair.plasticAdhesiveStiffness) * cohesive +
                            pair.initialAdhesivePlasticForce) /
                               pair.elasticStiffness
                         : between())
    {}
    double loading(double overlap) const { return pair.plasticStiffness * overlap + pair.initialAdhesiveForce; }
    double elastic(double overlap) const { return (overlap - plastic) * pair.elasticStiffness; }
    double adhesive(double overlap) const { return -(overlap - 2.0 * cohesive + plastic) * pair.elasticStiffness; }
    /// 13/9 of the one and -4/9 of the other.
    double between() const { return 1.4444444444444444 * cohesive - 0.4444444444444444 * plastic; }

    const SLeedsPair& pair;
    double plastic;  ///< where the elastic branch has no force, m
    double cohesive; ///< where it meets the adhesive one, m
    double end;      ///< up to which a contact that has let go bears nothing on loading, m
};

/// The spring's force along -n and the stiffness of the branch it is on.
struct SSpring
{
    double force = 0.0;
    double stiffness = 0.0;
};

/// Where a contact is on its branches, as its properties keep it.
class CLeedsState
{
public:
    CLeedsState(const SPropertyItem& properties, const unsigned int (&indices)[4])
        : properties(properties), indices(indices)
    {}
    double greatest() const { return properties.value(indices[eMaximumOverlap]); }
    bool is(ELeedsProperties flag) const { return fuzzyEqual(properties.value(indices[flag]), 1.0); }
    void set(ELeedsProperties property, double value) const { properties.set(indices[property], value); }

private:
    const SPropertyItem& properties;
    const unsigned int (&indices)[4];
};

static SSpring loaded(const SBranches& b, const CLeedsState& state, double overlap)
{
    const double elastic = b.pair.elasticStiffness;
    if (!state.is(eIsPlastic)) {
        state.set(eIsCohesive, 0.0);
        if (overlap > state.greatest())
            state.set(eMaximumOverlap, overlap);
        return {b.loading(overlap), b.pair.plasticStiffness};
    }
    if (!state.is(eIsCohesive)) {
        if (overlap <= state.greatest())
            return {b.elastic(overlap), elastic};
        state.set(eMaximumOverlap, overlap);
        state.set(eIsPlastic, 0.0);
        return {b.loading(overlap), b.pair.plasticStiffness};
    }
    if (state.is(eIsZero)) {
        if (overlap < b.end)
            return {0.0, 0.0};
        state.set(eIsZero, 0.0);
    }
    if (overlap < b.cohesive)
        return {b.adhesive(overlap), elastic};
    state.set(eIsCohesive, 0.0);
    return {b.elastic(overlap), elastic};
}

static SSpring unloaded(const SBranches& b, const CLeedsState& state, double overlap)
{
    const double elastic = b.pair.elasticStiffness;
    state.set(eIsPlastic, 1.0);
    if (state.is(eIsCohesive)) {
        if (!state.is(eIsZero) && overlap > b.between())
            return {b.adhesive(overlap), elastic};
        state.set(eIsZero, 1.0);
        return {0.0, 0.0};
    }
    if (overlap < b.cohesive) {
        state.set(eIsCohesive, 1.0);
        return {b.adhesive(overlap), elastic};
    }
    return {b.elastic(overlap), elastic};
}

bool CLeedsAdhesionContactModel::calculateForce(SContact& contact)
{
    const double overlap = contact.normalOverlap;
    if (overlap <= 0.0)
        return true;
    if (!areResolved())
        return false;
    const SLeedsPair* const pair = parameters.pairs.find(contact.material1->name, contact.material2->name);
    if (pair == nullptr)
        return true;
    const SFrame frame(contact);
    const unsigned int indices[] = {indexOf(eMaximumOverlap), indexOf(eIsPlastic), indexOf(eIsCohesive),
                                    indexOf(eIsZero)};
    const CLeedsState state(contact.properties, indices);
    const SBranches branches(*pair, state.greatest(), contact.element2.isGeometry());
    const SSpring spring = frame.loads() ? loaded(branches, state, overlap) : unloaded(branches, state, overlap);

    const double restitution = contact.interaction->restitution;
    const bool isDamped = !fuzzyEqual(restitution, 1.0) && spring.stiffness != 0.0 && restitution > 0.0;
    SContactResults& results = contact.results;
    const double damping = isDamped ? springDamping(frame.mass, spring.stiffness, restitution, shortPi) : 0.0;
    results.normalDamping = frame.damping(damping * frame.normalVelocity.length());
    results.normalForce = -spring.force * frame.normal + results.normalDamping;

    const double pull = pair->plasticAdhesiveStiffness * branches.cohesive - pair->initialAdhesivePlasticForce;
    const double stiffness = pair->tangentialStiffness;
    const C3DVector tangential = -(spring.stiffness != 0.0 ? stiffness : 0.0) * contact.tangentialOverlap;
    const double limit = contact.interaction->staticFriction * (2.0 * pull + (spring.force * frame.normal).length());
    const double size = tangential.length();
    if (size > limit) {
        results.tangentialForce = size == 0.0 ? C3DVector() : divided(tangential * limit, size);
        contact.tangentialOverlap = -divided(results.tangentialForce, stiffness);
        results.tangentialDamping = results.tangentialForce;
    }
    else {
        results.tangentialForce = tangential;
        if (isDamped && size != 0.0)
            results.tangentialForce -= divided(tangential, size) *
                                       springDamping(frame.mass, stiffness, restitution, shortPi) *
                                       frame.tangentialVelocity.length();
    }

    // The arm is R times |contact vector| over the contact radius.
    const double load = results.normalForce.length();
    const double friction = contact.interaction->rollingFriction;
    const auto roll = [&](const SContactElement& element, C3DVector& torque, C3DVector& rolling) {
        if (isZero(element.angularVelocity))
            return;
        torque = divided(-unit(element.angularVelocity) * load * element.physicalRadius * friction *
                             element.contactVector.length(),
                         element.contactRadius);
        rolling = torque;
    };
    roll(contact.element1, results.torque1, results.rollingTorque1);
    if (parameters.enableRollingFriction)
        roll(contact.element2, results.torque2, results.rollingTorque2);
    return true;
}

} // namespace NBrenmark
