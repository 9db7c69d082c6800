#pragma once
// The custom properties through which contacts and "Temperature Update" exchange heat.

#include "physics/required_property.h"
#include "properties/custom_property_manager.h"

namespace NBrenmark {

/// Rows of the table.
enum EHeatProperty
{
    eTemperatureProperty,
    eHeatFluxProperty ///< the first element gathers what contacts give in a step
};

inline std::vector<SRequiredProperty> heatProperties()
{
    return {{eParticleOwner, "Temperature", 1, eTemperatureQuantity},
            {eParticleOwner, "Heat Flux", 2, eHeatFluxQuantity}};
}

} // namespace NBrenmark
