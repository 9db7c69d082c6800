// A spring that keeps a part of its greatest overlap.
#include "physics/hysteretic_spring.h"

#include "materials/interactions.h"
#include "materials/materials.h"
#include "physics/contact_mechanics.h"

#include <algorithm>
#include <cmath>

namespace NBrenmark {

using namespace NContactMechanics;

bool CHystereticContactModel::calculateForce(SContact& contact)
{
    const double overlap = contact.normalOverlap;
    if (overlap <= 0.0)
        return true;
    if (!areResolved())
        return false;
    const SHystereticInteraction* const pair =
        parameters.interactions.find(contact.material1->name, contact.material2->name);
    const auto& yields = parameters.yields.entries;
    const auto yield1 = yields.find(contact.element1.name), yield2 = yields.find(contact.element2.name);
    if (pair == nullptr || yield1 == yields.end() || yield2 == yields.end())
        return true;

    const SFrame frame(contact);
    const double restitution = contact.interaction->restitution;
    const double stiffness = 5.0 * frame.radius * std::min(yield1->second, yield2->second);
    const double tangentialStiffness = stiffness * pair->stiffness;
    const double residual = contact.properties.value(indexOf(0));
    const double loading = stiffness * overlap;
    const double unloading = (overlap - residual) * stiffness / (restitution * restitution);
    double spring = unloading;
    if (loading < unloading) {
        spring = loading;
        contact.properties.set(indexOf(0), (1.0 - restitution * restitution) * overlap);
    }
    else if (overlap <= residual) {
        spring = 0.0;
        contact.properties.set(indexOf(0), overlap);
    }

    SContactResults& results = contact.results;
    if (restitution > 0.0)
        results.normalDamping = frame.damping(springDamping(frame.mass, stiffness, restitution) * pair->damping *
                                              frame.normalVelocity.length());
    results.normalForce = -spring * frame.normal + (restitution > 0.0 ? results.normalDamping : C3DVector());

    const C3DVector tangential = -tangentialStiffness * contact.tangentialOverlap;
    const double limit = contact.interaction->staticFriction * spring;
    if (tangential.length() > limit) {
        results.tangentialForce = divided(tangential * limit, tangential.length());
        contact.tangentialOverlap = -divided(results.tangentialForce, tangentialStiffness);
    }
    else {
        results.tangentialForce = tangential;
        if (restitution > 0.0) {
            const double ratio = pi / std::log(restitution);
            const double size = std::sqrt(frame.tangentialVelocity.squaredLength() * 4.0 * frame.mass *
                                          tangentialStiffness / (ratio * ratio + 1.0));
            results.tangentialDamping = -unit(contact.tangentialOverlap) * size;
            results.tangentialForce += results.tangentialDamping;
        }
    }
    applyRollingFriction(contact, spring, parameters.enableRollingFriction ? eBothSides : eFirstSide);
    return true;
}

} // namespace NBrenmark
