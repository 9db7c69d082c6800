// Elastic constants, springs, damping and friction of contacts.
#include "physics/contact_mechanics.h"

#include "materials/interactions.h"
#include "materials/materials.h"

#include <cmath>

namespace NBrenmark::NContactMechanics {

// ---------------------------------------------------------------- vectors

C3DVector divided(const C3DVector& vector, double divisor)
{
    constexpr double huge = 9e30;
    return isZero(divisor) ? C3DVector(huge, huge, huge)
                           : C3DVector(vector.x / divisor, vector.y / divisor, vector.z / divisor);
}

C3DVector unit(const C3DVector& vector) { return isZero(vector) ? vector : divided(vector, vector.length()); }

SFrame::SFrame(const SContact& contact)
    : normal(unit(contact.contactPoint - contact.element1.position)),
      radius(contact.element1.physicalRadius * contact.element2.physicalRadius /
             (contact.element1.physicalRadius + contact.element2.physicalRadius)),
      mass(contact.element1.mass * contact.element2.mass / (contact.element1.mass + contact.element2.mass))
{
    takeVelocities(contact);
}

void SFrame::takeVelocities(const SContact& contact)
{
    velocity = contact.velocity1 - contact.velocity2;
    normalVelocity = velocity.dot(normal) * normal;
    tangentialVelocity = velocity - normalVelocity;
}

// ---------------------------------------------------------------- constants

double equivalentYoungsModulus(const SContact& contact)
{
    const CMaterial& a = *contact.material1;
    const CMaterial& b = *contact.material2;
    return 2.0 * a.shearModulus * b.shearModulus /
           ((1.0 - a.poissonsRatio) * b.shearModulus + (1.0 - b.poissonsRatio) * a.shearModulus);
}

double equivalentShearModulus(const SContact& contact)
{
    const CMaterial& a = *contact.material1;
    const CMaterial& b = *contact.material2;
    return a.shearModulus * b.shearModulus /
           ((2.0 - a.poissonsRatio) * b.shearModulus + (2.0 - b.poissonsRatio) * a.shearModulus);
}

double dampingRatio(double restitution)
{
    if (!(restitution > 0.0))
        return 0.0;
    const double logarithm = std::log(restitution);
    return -logarithm / std::sqrt(logarithm * logarithm + pi * pi);
}

double springDamping(double mass, double stiffness, double restitution, double circleConstant)
{
    const double ratio = circleConstant / std::log(restitution);
    return std::sqrt(4.0 * mass * stiffness / (ratio * ratio + 1.0));
}

double normalStiffness(double youngsModulus, double radius, double overlap)
{
    return 2.0 * youngsModulus * std::sqrt(radius) * std::sqrt(overlap);
}

double tangentialStiffness(double shearModulus, double radius, double overlap)
{
    return 8.0 * shearModulus * std::sqrt(radius) * std::sqrt(overlap);
}

double hertzDamping(double ratio, double stiffness, double mass)
{
    return 2.0 * rootOfFiveSixths * ratio * std::sqrt(stiffness * mass);
}

double hertzForce(double youngsModulus, double radius, double overlap)
{
    return 4.0 / 3.0 * youngsModulus * std::sqrt(radius) * overlap * std::sqrt(overlap);
}

// ---------------------------------------------------------------- forces

SSprings applyHertzMindlin(SContact& contact, const SFrame& frame)
{
    const double youngsModulus = equivalentYoungsModulus(contact);
    const double ratio = dampingRatio(contact.interaction->restitution);
    const double stiffness = normalStiffness(youngsModulus, frame.radius, contact.normalOverlap);
    const C3DVector spring = -hertzForce(youngsModulus, frame.radius, contact.normalOverlap) * frame.normal;
    SContactResults& results = contact.results;
    results.normalDamping = frame.damping(hertzDamping(ratio, stiffness, frame.mass) * frame.normalVelocity.length());
    results.normalForce = spring + results.normalDamping;

    const double tangential = tangentialStiffness(equivalentShearModulus(contact), frame.radius, contact.normalOverlap);
    return {spring, applyTangentialSpring(contact, frame, tangential, hertzDamping(ratio, tangential, frame.mass),
                                          spring.squaredLength())};
}

C3DVector applyTangentialSpring(SContact& contact, const SFrame& frame, double stiffness, double damping,
                                double squaredLoad)
{
    SContactResults& results = contact.results;
    const double friction = contact.interaction->staticFriction;
    const C3DVector spring = -stiffness * contact.tangentialOverlap;
    const double squaredLimit = friction * friction * squaredLoad;
    if (spring.squaredLength() > squaredLimit) {
        results.tangentialForce = std::sqrt(squaredLimit / spring.squaredLength()) * spring;
        contact.tangentialOverlap = -divided(results.tangentialForce, stiffness);
        results.tangentialDamping = results.tangentialForce;
        return C3DVector();
    }
    results.tangentialDamping = -damping * frame.tangentialVelocity;
    results.tangentialForce = spring + results.tangentialDamping;
    return spring;
}

double armOf(const SContactElement& element, const SContact& contact)
{
    return (contact.contactPoint - element.centreOfMass).length();
}

bool rollingTorque(const SContactElement& element, double arm, double load, double friction, C3DVector& torque)
{
    if (isZero(element.angularVelocity))
        return false;
    torque = -unit(element.angularVelocity) * load * arm * friction;
    return true;
}

void applyRollingFriction(SContact& contact, double load, ERollingSides sides)
{
    SContactResults& results = contact.results;
    const double friction = contact.interaction->rollingFriction;
    if (rollingTorque(contact.element1, armOf(contact.element1, contact), load, friction, results.torque1))
        results.rollingTorque1 = results.torque1;
    if (sides == eBothSides &&
        rollingTorque(contact.element2, armOf(contact.element2, contact), load, friction, results.torque2))
        results.rollingTorque2 = results.torque2;
}

} // namespace NBrenmark::NContactMechanics
