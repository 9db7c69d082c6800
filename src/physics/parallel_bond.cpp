// Elastic beams beside the elastic contact.
#include "physics/parallel_bond.h"

#include "materials/interactions.h"
#include "materials/materials.h"
#include "physics/bond_table.h"
#include "physics/contact_mechanics.h"

#include <cmath>
#include <mutex>

namespace NBrenmark {

using namespace NContactMechanics;

/// One for the whole program: bonds form in it.
static std::mutex& formation()
{
    static std::mutex lock;
    return lock;
}

/// Goes on with the forming of bonds. \return whether a pair without a bond gets one now
/// \param areSought  whether bonds act at all
bool CParallelBondContactModel::bondsForm(const SContact& contact, bool& areSought)
{
    CParallelBondContactModelParamData& p = parameters;
    areSought = true;
    if (__atomic_load_n(&p.state, __ATOMIC_ACQUIRE) == eBondsDone)
        return false;
    const std::lock_guard<std::mutex> guard(formation());
    quint32 state = p.state;
    const double time = contact.time;
    if (state == eBondsNotBegun) {
        if (time < p.formationStartTime && !fuzzyEqual(time, p.formationStartTime)) {
            areSought = false;
            return false;
        }
        state = eBondsForming;
        p.formationEndTime = time + contact.timeStep;
    }
    else if (time > p.formationEndTime || fuzzyEqual(time, p.formationEndTime))
        state = eBondsDone;
    __atomic_store_n(&p.state, state, __ATOMIC_RELEASE);
    return state == eBondsForming;
}

/// The load of a beam after a step; it breaks if that is too much for it.
static void loadBeam(const SContact& contact, const SFrame& frame, const SBondRow& bond)
{
    const CBondParameters& beam = **bond.parameters;
    const double dt = contact.timeStep;
    const double radius = beam.bondRadius;
    const double square = radius * radius;
    const double area = pi * square;
    const double polar = pi * (square * square) / 2.0;
    const double inertia = polar / 2.0;
    const C3DVector turn = (contact.element1.angularVelocity - contact.element2.angularVelocity) * dt;
    const C3DVector twist = turn.dot(frame.normal) * frame.normal;
    *bond.normalForce -= frame.normalVelocity * dt * beam.normalStiffness * area;
    *bond.tangentialForce -= frame.tangentialVelocity * dt * beam.shearStiffness * area;
    *bond.normalMoment -= polar * twist * beam.shearStiffness;
    *bond.tangentialMoment -= inertia * (turn - twist) * beam.normalStiffness;

    const double tension =
        std::abs(bond.tangentialMoment->length() * radius / inertia - bond.normalForce->length() / area);
    const double shear = bond.normalMoment->length() * radius / polar + bond.tangentialForce->length() / area;
    if (tension <= beam.normalStrength && shear <= beam.shearStrength)
        return;
    *bond.state = 0;
    *bond.brokenAt = contact.time;
    *bond.normalForce = *bond.tangentialForce = *bond.normalMoment = *bond.tangentialMoment = C3DVector();
}

/// The ends of a pair, that of the smaller id first.
static BondEnds endsOf(const SContact& contact)
{
    const bool inOrder = contact.element1.id <= contact.element2.id;
    const SContactElement& a = inOrder ? contact.element1 : contact.element2;
    const SContactElement& b = inOrder ? contact.element2 : contact.element1;
    return {a.key1, a.key2, b.key1, b.key2};
}

bool CParallelBondContactModel::calculateForce(SContact& contact)
{
    SFrame frame(contact);
    SContactResults& results = contact.results;
    C3DVector bondNormal, bondTangential, bondTorque;
    if (!contact.element2.isGeometry() && contact.bonds != nullptr) {
        bool areSought = false;
        const bool form = bondsForm(contact, areSought);
        SBondRow bond;
        const BondEnds ends = endsOf(contact);
        if (form) {
            const std::lock_guard<std::mutex> guard(formation());
            if (!contact.bonds->find(ends, bond)) {
                const CBondParameters* const beam =
                    parameters.bondParameters.find(contact.material1->name, contact.material2->name);
                if (beam != nullptr && contact.bonds->make(ends, *beam, bond))
                    contact.tangentialOverlap = C3DVector();
            }
        }
        else if (areSought)
            contact.bonds->find(ends, bond);
        if (bond.state != nullptr && *bond.state == 1 && *bond.parameters != nullptr) {
            loadBeam(contact, frame, bond);
            bondNormal = *bond.normalForce;
            bondTangential = *bond.tangentialForce;
            if (parameters.torqueFeedback)
                bondTorque = *bond.normalMoment + *bond.tangentialMoment;
        }
    }

    SSprings springs; // of the contact beside the bond
    C3DVector normalDamping, tangentialDamping, rolling1, rolling2;
    if (contact.normalOverlap > 0.0) {
        const SContactElement& first = contact.element1;
        const SContactElement& second = contact.element2;
        contact.velocity1 += first.angularVelocity.cross((first.physicalRadius - first.contactRadius) * frame.normal);
        contact.velocity2 +=
            second.angularVelocity.cross((second.contactRadius - second.physicalRadius) * frame.normal);
        frame.takeVelocities(contact);
        springs = applyHertzMindlin(contact, frame);
        normalDamping = results.normalDamping;
        tangentialDamping = results.tangentialDamping;
        const double load = results.normalForce.length(); // without the bond's
        const double friction = contact.interaction->rollingFriction;
        rollingTorque(first, armOf(first, contact), load, friction, rolling1);
        if (parameters.enableRollingFriction)
            rollingTorque(second, armOf(second, contact), load, friction, rolling2);
    }
    results.normalForce = springs.normal + bondNormal + normalDamping;
    results.tangentialForce = springs.tangential + bondTangential + tangentialDamping;
    results.torque1 = results.rollingTorque1 = bondTorque + rolling1;
    results.torque2 = results.rollingTorque2 = -bondTorque + rolling2;
    return true;
}

} // namespace NBrenmark
