// What contacts do to geometry, added up.
#include "physics/relative_wear.h"

#include "physics/contact_mechanics.h"

namespace NBrenmark {

using namespace NContactMechanics;

enum EWearProperties // rows of the table
{
    ePreviousVelocity,
    eNormalEnergy,
    eTangentialEnergy,
    eNormalForce,
    eTangentialForce
};

bool CRelativeWearContactModel::calculateForce(SContact& contact)
{
    if (contact.normalOverlap <= 0.0)
        return true;
    if (!areResolved())
        return false;
    if (!contact.element2.isGeometry())
        return true;
    const SFrame frame(contact);
    const double normalForce = contact.results.normalForce.length();
    const double tangentialForce = contact.results.tangentialForce.length();
    const double speed = frame.normalVelocity.length();
    const double velocity = frame.loads() ? -speed : speed; // below 0 while the sides come nearer
    const double before = contact.properties.value(indexOf(ePreviousVelocity));

    const SPropertyItem& wall = contact.element2.properties;
    if (velocity < 0.0)
        wall.add(indexOf(eNormalEnergy), speed * normalForce * contact.timeStep);
    wall.add(indexOf(eTangentialEnergy), frame.tangentialVelocity.length() * tangentialForce * contact.timeStep);
    if (before < 0.0 && velocity > 0.0)
        wall.add(indexOf(eNormalForce), normalForce);
    wall.add(indexOf(eTangentialForce), tangentialForce);
    contact.properties.set(indexOf(ePreviousVelocity), velocity);
    return true;
}

} // namespace NBrenmark
