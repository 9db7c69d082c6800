// Elastic contact through which heat flows.
#include "physics/heat_conduction.h"

#include "physics/contact_mechanics.h"
#include "properties/custom_property_data.h"

#include <cmath>

namespace NBrenmark {

using namespace NContactMechanics;

bool CHeatConductionModel::calculateForce(SContact& contact)
{
    if (contact.normalOverlap <= 0.0)
        return true;
    if (!areResolved())
        return false;
    const SFrame frame(contact);
    applyHertzMindlin(contact, frame);
    const double load = contact.results.normalForce.length();
    applyRollingFriction(contact, load, eBothSides);

    const SContactElement& first = contact.element1;
    const SContactElement& second = contact.element2;
    const double k1 = parameters.conductivities.valueOf(first.name);
    const double k2 = parameters.conductivities.valueOf(second.name);
    const bool haveTemperatures =
        first.properties.values != nullptr && second.properties.values != nullptr && !second.isGeometry();
    if (!haveTemperatures || k1 + k2 == 0.0)
        return true;
    // The exponent of the model is 0.3333, not a third.
    const double contactRadius = std::pow(load * (0.75 / equivalentYoungsModulus(contact)) * frame.radius, 0.3333);
    const double conductance = contactRadius * 4.0 * k1 * k2 / (k1 + k2);
    const double flow = conductance * (second.properties.value(indexOf(eTemperatureProperty)) -
                                       first.properties.value(indexOf(eTemperatureProperty)));
    first.properties.add(indexOf(eHeatFluxProperty), flow);
    second.properties.add(indexOf(eHeatFluxProperty), -flow);
    return true;
}

void CHeatConductionModel::beginStep(const std::vector<CCustomPropertyData*>& particles)
{
    for (CCustomPropertyData* const values : particles)
        if (indexOf(eHeatFluxProperty) < values->lists.size())
            values->lists[indexOf(eHeatFluxProperty)]->fillElement(0, 0.0);
}

} // namespace NBrenmark
