#pragma once
// Every unit of every quantity: the one place that knows them.

#include "units/quantity.h"

#include <vector>

namespace NBrenmark {

/// base = value * factor + offset
struct SUnit
{
    const char* name; ///< UTF-8
    double factor;
    double offset = 0.0;
    double toDisplayFactor = 1.0 / factor; ///< value = base * toDisplayFactor + toDisplayOffset
    double toDisplayOffset = -offset * toDisplayFactor;
};

struct SQuantity
{
    EQuantity number;
    const char* name; ///< English, as shown
    const char* key;  ///< of the preferred unit in the group "Units Config"; null: always the first unit
    int defaultIndex; ///< of the preferred unit
    std::vector<SUnit> units;
};

/// By its number. One that files may hold but that no row has is "None", without units.
const SQuantity& quantityOf(quint32 number);

} // namespace NBrenmark
