// An attraction that grows with the overlap.
#include "physics/cohesion.h"

#include "materials/materials.h"
#include "physics/contact_mechanics.h"
#include "physics/physics_owner.h"

namespace NBrenmark {

using namespace NContactMechanics;

bool CCohesionContactModel::starting(quint32 /*threadCount*/)
{
    const std::vector<std::string> materials = deck != nullptr ? deck->materialNames() : std::vector<std::string>();
    for (const std::string& a : materials)
        for (const std::string& b : materials)
            if (parameters.energyDensity.find(a, b) == nullptr)
                return false;
    return true;
}

bool CCohesionContactModel::calculateForce(SContact& contact)
{
    const double* const density = parameters.energyDensity.find(contact.material1->name, contact.material2->name);
    if (contact.normalOverlap <= 0.0 || density == nullptr)
        return true;
    contact.results.normalForce = *density * pi * contact.normalOverlap * lengthOf(contact) * SFrame(contact).normal;
    return true;
}

double CCohesionContactModel::lengthOf(const SContact& contact) const { return 2.0 * contact.element1.physicalRadius; }

double CCohesionV2ContactModel::lengthOf(const SContact& contact) const
{
    return contact.element2.isGeometry() ? contact.element1.physicalRadius : SFrame(contact).radius;
}

} // namespace NBrenmark
