// Elasto-plastic adhesion of bulk solids.
#include "physics/edinburgh_adhesion.h"

#include "materials/interactions.h"
#include "materials/materials.h"
#include "physics/contact_mechanics.h"

#include <algorithm>
#include <cmath>

namespace NBrenmark {

using namespace NContactMechanics;

/// Up to this exponent a contact counts as linear.
constexpr double linearExponent = 1.001;

/// Of the circle in which the two sides meet, m, at the plastic overlap.
static double circleRadius(const SContact& contact, double plastic)
{
    const auto square = [](double x) { return x * x; };
    const double r1 = contact.element1.physicalRadius, r2 = contact.element2.physicalRadius;
    if (contact.element2.isGeometry()) {
        const double d = std::min(2.0 * r1 - plastic, 2.0 * r1 - contact.normalOverlap);
        return std::sqrt(4.0 * square(d) * square(r1) - square(square(d))) / (2.0 * d);
    }
    const double d = std::min((contact.element1.position - contact.element2.position).length(), r1 + r2 - plastic);
    const double t = square(d) - square(r2) + square(r1);
    return std::sqrt(4.0 * square(d) * square(r1) - square(t)) / (2.0 * d);
}

bool CEdinburghCohesionContactModel::calculateForce(SContact& contact)
{
    if (!areResolved())
        return false;
    const SEdinburghPair* const entry = parameters.pairs.find(contact.material1->name, contact.material2->name);
    const SEdinburghPair pair = entry != nullptr ? *entry : SEdinburghPair();
    const double exponent = pair.slopeExponential, tensile = pair.tensileExponential;
    const SFrame frame(contact);
    const double overlap = contact.normalOverlap;
    const double plastic = contact.properties.value(indexOf(0));
    const double youngsModulus = equivalentYoungsModulus(contact);

    // Stiffness of the branches, and the pull-off.
    const double k1 =
        exponent > 1.0 ? 4.0 / 3.0 * std::sqrt(frame.radius) * youngsModulus : 2.0 * youngsModulus * frame.radius;
    const double k2 = k1 / (1.0 - pair.contactPlasticityRatio);
    const double pullOff = 1.5 * pi * pair.surfaceEnergy * circleRadius(contact, plastic);
    const double b3 = std::pow(1.0 - k1 / k2, 1.0 / exponent) * overlap;
    const double f3 = std::pow(b3, exponent) * k2 / 2.0;
    const double b4 = (std::pow(plastic, exponent) * k2 - pullOff) / k2;
    double slope = 0.0;
    if (contact.element2.isGeometry()) {
        const double b5 = -pullOff >= f3 ? std::pow(b4, 1.0 / exponent) : plastic / 2.0;
        slope = std::pow(b5, -tensile) * pullOff;
    }
    else if (pullOff != 0.0)
        slope = pullOff > f3 ? std::pow(b3 / 2.0, -tensile) * f3 : std::pow(b4, -tensile / exponent) * pullOff;
    if (std::isnan(slope))
        slope = 0.0;

    const double power = std::pow(overlap, exponent);
    const double adhesion = -std::pow(overlap, tensile) * slope;
    const double loading = power * k1;
    const double unloading = (power - std::pow(plastic, exponent)) * k2;
    double spring = unloading;
    if (unloading >= loading) {
        spring = loading;
        contact.properties.set(indexOf(0), b3);
    }
    else if (unloading <= adhesion) {
        spring = adhesion;
        if (frame.velocity.dot(frame.normal) > 0.0)
            contact.properties.set(indexOf(0), std::pow((power * k2 - adhesion) / k2, 1.0 / exponent));
    }

    // Damping goes by v.n with its sign.
    const double restitution = contact.interaction->restitution;
    const bool isLinear = exponent <= linearExponent;
    const bool isLinearlyDamped = isLinear && restitution > 0.0 && restitution < 1.0;
    const double ratio = dampingRatio(restitution);
    double damping = 0.0;
    if (isLinearlyDamped)
        damping = springDamping(frame.mass, 2.0 * youngsModulus * frame.radius, restitution);
    else if (!isLinear)
        damping = 2.0 * rootOfFiveSixths * ratio *
                  std::sqrt(2.0 * youngsModulus * std::sqrt(frame.radius * overlap) * frame.mass);
    SContactResults& results = contact.results;
    results.normalDamping = -damping * frame.normal * frame.velocity.dot(frame.normal);
    results.normalForce = -(spring + pair.constPullOffForce) * frame.normal + results.normalDamping;

    // Friction goes by the load above the adhesive branch.
    const SContactElement& first = contact.element1;
    const SContactElement& second = contact.element2;
    const C3DVector surface = frame.normal.cross(second.angularVelocity) * second.physicalRadius +
                              frame.normal.cross(first.angularVelocity) * first.physicalRadius -
                              frame.tangentialVelocity;
    const double load = spring - adhesion;
    double stiffness = 2.0 * youngsModulus * frame.radius * pair.tangentStiffMultiplier;
    double tangentialDamping = isLinearlyDamped ? springDamping(frame.mass, stiffness, restitution) : 0.0;
    if (!isLinear) {
        stiffness =
            8.0 * equivalentShearModulus(contact) * std::sqrt(frame.radius * overlap) * pair.tangentStiffMultiplier;
        tangentialDamping = hertzDamping(ratio, stiffness, frame.mass);
    }
    C3DVector tangential = tangentialDamping * surface - stiffness * contact.tangentialOverlap;
    const double limit = contact.interaction->staticFriction * load;
    if (load <= 0.0)
        tangential = contact.tangentialOverlap = C3DVector();
    else if (tangential.length() > limit) {
        tangential = divided(tangential * limit, tangential.length());
        contact.tangentialOverlap = divided(tangentialDamping * surface - tangential, stiffness);
    }
    results.tangentialForce = tangential;
    results.tangentialDamping = C3DVector();
    applyRollingFriction(contact, results.normalForce.length(),
                         parameters.enableRollingFriction ? eBothSides : eFirstSide);
    return true;
}

} // namespace NBrenmark
