// Elastic contact with friction.
#include "physics/hertz_mindlin_no_slip.h"

#include "physics/contact_mechanics.h"

namespace NBrenmark {

using namespace NContactMechanics;

bool CHertzMindlinNoSlipContactModel::calculateForce(SContact& contact)
{
    if (contact.normalOverlap <= 0.0)
        return true;
    applyHertzMindlin(contact, SFrame(contact));
    applyRollingFriction(contact, contact.results.normalForce.length(),
                         parameters.enableRollingFriction ? eBothSides : eFirstSide);
    return true;
}

} // namespace NBrenmark
