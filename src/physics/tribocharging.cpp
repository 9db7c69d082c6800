// Charge that moves through contacts.
#include "physics/tribocharging.h"

#include "materials/materials.h"
#include "physics/contact_mechanics.h"

#include <cmath>
#include <utility>

namespace NBrenmark {

using namespace NContactMechanics;

enum EChargeProperties // rows of the table
{
    eParticleCharge,
    eGeometryCharge
};

/// The most charge that a surface bears, C/m^2.
constexpr double surfaceChargeLimit = 2.66e-5;

bool CTribochargingContactModel::calculateForce(SContact& contact)
{
    const SContactElement& first = contact.element1;
    const SContactElement& second = contact.element2;
    const double work1 = contact.material1->workFunction, work2 = contact.material2->workFunction;
    if (contact.normalOverlap <= 0.0 || second.isExempt || fuzzyEqual(work1, work2))
        return true;
    const double r1 = first.physicalRadius, r2 = second.physicalRadius;
    const bool chargesFirst = r2 >= r1 && !(r1 == r2 && work2 < work1);
    const SContactElement& charging = chargesFirst ? first : second;
    const SContactElement& other = chargesFirst ? second : first;
    const auto chargeOf = [this](const SContactElement& element) {
        return indexOf(element.isGeometry() ? eGeometryCharge : eParticleCharge);
    };
    const double radius = charging.physicalRadius;
    const double most = 4.0 * pi * (radius * radius) * surfaceChargeLimit;
    const double charge = charging.properties.value(chargeOf(charging));
    const double change = (most - std::abs(charge)) * parameters.alpha * contact.timeStep;
    charging.properties.add(chargeOf(charging), change);
    other.properties.add(chargeOf(other), -change);
    return true;
}

} // namespace NBrenmark
