// A linear spring along and across the normal.
#include "physics/linear_spring.h"

#include "materials/interactions.h"
#include "materials/materials.h"
#include "physics/contact_mechanics.h"

#include <cmath>

namespace NBrenmark {

using namespace NContactMechanics;

/// E' = 1 / ((1 - nu1^2) / E1 + (1 - nu2^2) / E2), with E = 2 (1 + nu) G, Pa
static double reducedModulus(const CMaterial& a, const CMaterial& b)
{
    const auto compliance = [](const CMaterial& m) {
        return (1.0 - m.poissonsRatio * m.poissonsRatio) / ((2.0 * m.poissonsRatio + 2.0) * m.shearModulus);
    };
    return 1.0 / (compliance(a) + compliance(b));
}

bool CLinearSpringContactModel::calculateForce(SContact& contact)
{
    if (contact.normalOverlap <= 0.0)
        return true;
    const SFrame frame(contact);
    const double stiffnessOfRoot = std::sqrt(frame.radius) * reducedModulus(*contact.material1, *contact.material2);
    const double speed = parameters.characteristicVelocity;
    const double stiffness = std::pow(0.9375 * frame.mass * (speed * speed) / stiffnessOfRoot, 0.2) * stiffnessOfRoot *
                             1.0666666666666667; // 15/16 and 16/15
    const double restitution = contact.interaction->restitution;
    const double damping = restitution > 0.0 ? springDamping(frame.mass, stiffness, restitution) : 0.0;

    SContactResults& results = contact.results;
    const C3DVector normalSpring = -stiffness * contact.normalOverlap * frame.normal;
    results.normalDamping = frame.damping(damping * frame.normalVelocity.length());
    results.normalForce = normalSpring + results.normalDamping;

    const C3DVector spring = -stiffness * contact.tangentialOverlap;
    const double size = spring.length();
    const double limit = contact.interaction->staticFriction * normalSpring.length();
    constexpr double zeroComponent = 1e-40;
    const auto isSet = [](double component) { return std::abs(component) > zeroComponent; };
    if (size > limit) {
        results.tangentialForce = divided(spring * limit, size);
        contact.tangentialOverlap = -divided(results.tangentialForce, stiffness);
    }
    else if (isSet(spring.x) || isSet(spring.y) || isSet(spring.z))
        results.tangentialForce = spring - divided(spring, size) * damping * frame.tangentialVelocity.length();
    applyRollingFriction(contact, results.normalForce.length(),
                         parameters.enableRollingFriction ? eBothSides : eFirstSide);
    return true;
}

} // namespace NBrenmark
