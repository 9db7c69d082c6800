// Elastic contact with surface energy.
#include "physics/jkr.h"

#include "materials/interactions.h"
#include "materials/materials.h"
#include "physics/contact_mechanics.h"

#include <algorithm>
#include <cmath>

namespace NBrenmark {

using namespace NContactMechanics;

/// The greatest real root of a x^4 + c x^2 + d x + e = 0, in closed form (L. Ferrari); 0 if none is above 0.
static double greatestRoot(double a, double c, double d, double e)
{
    const double delta0 = c * c + 12.0 * a * e;
    const double delta1 = 2.0 * c * c * c + 27.0 * a * d * d - 72.0 * a * c * e;
    const double p = 8.0 * a * c / (8.0 * a * a);
    const double q = 8.0 * a * a * d / (8.0 * a * a * a);
    const double square = delta1 * delta1 - 4.0 * delta0 * delta0 * delta0; // the discriminant, but for -27
    double resolvent = 0.0;
    if (square > 0.0) {
        const double cubic = std::cbrt((delta1 + std::sqrt(square)) / 2.0);
        resolvent = (cubic + delta0 / cubic) / (3.0 * a) - 2.0 * p / 3.0;
    }
    else {
        const double angle = std::acos(delta1 / (2.0 * std::sqrt(delta0 * delta0 * delta0))) / 3.0;
        resolvent = 2.0 * std::sqrt(delta0) * std::cos(angle) / (3.0 * a) - 2.0 * p / 3.0;
    }
    const double s = 0.5 * std::sqrt(resolvent);
    // Two pairs of roots; a pair that isn't real gives NaN, which no comparison takes.
    double greatest = 0.0;
    for (const double root :
         {0.5 * std::sqrt(-4.0 * s * s - 2.0 * p + q / s) - s, 0.5 * std::sqrt(-4.0 * s * s - 2.0 * p - q / s) + s})
        if (root > greatest)
            greatest = root;
    return greatest;
}

bool CJkrContactModel::calculateForce(SContact& contact)
{
    const double* const entry = parameters.surfaceEnergy.find(contact.material1->name, contact.material2->name);
    const double energy = entry != nullptr ? *entry : 0.0;
    const double overlap = contact.normalOverlap;
    const SFrame frame(contact);
    const double youngsModulus = equivalentYoungsModulus(contact);

    double spring = 0.0;
    double adhesion = 0.0;
    if (energy > 0.0) {
        const double radius = greatestRoot(1.0 / (frame.radius * frame.radius), -2.0 * overlap / frame.radius,
                                           -4.0 * pi * energy / youngsModulus, overlap * overlap);
        if (radius > 0.0) {
            spring = 4.0 / 3.0 * youngsModulus * radius * radius * radius / frame.radius;
            adhesion = 4.0 * radius * std::sqrt(pi * energy * youngsModulus * radius);
        }
    }
    else if (energy == 0.0 && overlap > 0.0)
        spring = 4.0 / 3.0 * youngsModulus * std::sqrt(overlap * frame.radius) * overlap;

    SContactResults& results = contact.results;
    const double ratio = dampingRatio(contact.interaction->restitution);
    const bool isDamped = overlap > 0.0 && contact.interaction->restitution > 0.0;
    results.normalDamping =
        isDamped
            ? frame.damping(hertzDamping(ratio, normalStiffness(youngsModulus, frame.radius, overlap), frame.mass) *
                            frame.normalVelocity.length())
            : C3DVector();
    results.normalForce = -(spring - adhesion) * frame.normal + results.normalDamping;
    if (!(overlap > 0.0))
        return true;

    const double stiffness = tangentialStiffness(equivalentShearModulus(contact), frame.radius, overlap);
    applyTangentialSpring(contact, frame, stiffness, 2.0 * ratio * std::sqrt(5.0 / 6.0 * stiffness * frame.mass),
                          spring * spring);
    applyRollingFriction(contact, results.normalForce.length(),
                         parameters.enableRollingFriction ? eBothSides : eFirstSide);
    return true;
}

} // namespace NBrenmark
