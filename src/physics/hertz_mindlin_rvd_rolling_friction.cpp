// Elastic contact whose rolling friction goes by the velocity of the surfaces relative to each other.
#include "physics/hertz_mindlin_rvd_rolling_friction.h"

#include "materials/interactions.h"
#include "physics/contact_mechanics.h"

namespace NBrenmark {

using namespace NContactMechanics;

bool CHertzMindlinRVDCTContactModel::calculateForce(SContact& contact)
{
    if (contact.normalOverlap <= 0.0)
        return true;
    const SFrame frame(contact);
    applyHertzMindlin(contact, frame);

    const SContactElement& first = contact.element1;
    const SContactElement& second = contact.element2;
    const C3DVector surface = second.isGeometry() ? first.angularVelocity * first.physicalRadius
                                                  : (first.angularVelocity + second.angularVelocity) *
                                                        (first.physicalRadius + second.physicalRadius) * 0.5;
    const double radius = second.isGeometry() ? first.physicalRadius : frame.radius;
    const C3DVector direction = unit(frame.normal.cross(frame.normal.cross(surface)));
    SContactResults& results = contact.results;
    const C3DVector torque = results.normalForce.length() * contact.interaction->rollingFriction * radius * direction;
    results.torque1 = results.rollingTorque1 = divided(torque * armOf(first, contact), first.contactRadius);
    if (!second.isGeometry())
        results.torque2 = results.rollingTorque2 = divided(torque * armOf(second, contact), second.contactRadius);
    return true;
}

} // namespace NBrenmark
