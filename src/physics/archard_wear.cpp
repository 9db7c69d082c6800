// Elastic contact that wears geometry.
#include "physics/archard_wear.h"

#include "physics/contact_mechanics.h"

namespace NBrenmark {

using namespace NContactMechanics;

bool CArchardContactModel::calculateForce(SContact& contact)
{
    if (contact.normalOverlap <= 0.0)
        return true;
    if (!areResolved())
        return false;
    const SFrame frame(contact);
    applyHertzMindlin(contact, frame);
    applyRollingFriction(contact, contact.results.normalForce.length(),
                         parameters.enableRollingFriction ? eBothSides : eFirstSide);

    const SContactElement& wall = contact.element2;
    const auto& constants = parameters.wearConstants.entries;
    const auto constant = wall.isGeometry() ? constants.find(wall.name) : constants.end();
    if (constant != constants.end()) // the damping, not the whole force, is what wears
        wall.properties.add(indexOf(0), contact.results.normalDamping.length() * frame.tangentialVelocity.length() *
                                            constant->second * contact.timeStep / wall.area);
    return true;
}

} // namespace NBrenmark
