#pragma once
// The units that --units asks for.

#include "units/unit_table.h"

#include <array>
#include <string>

namespace NBrenmark {

class CChosenUnits
{
public:
    /// Base units for every quantity that the text doesn't name.
    /// \param text  "length=mm,angVel=rpm": keys of the preferences and names of the quantity's units; may be empty
    /// \throws CFailure  there is no such key or unit
    explicit CChosenUnits(const std::string& text);

    /// Null for the base unit.
    const SUnit* of(quint32 quantity) const { return quantity < chosen.size() ? chosen[quantity] : nullptr; }
    /// "mm"; empty for a quantity without units.
    std::string nameOf(quint32 quantity) const;
    /// "Velocity X [m/s]"
    std::string withUnit(const std::string& name, quint32 quantity) const;

private:
    std::array<const SUnit*, eQuantityCount> chosen{};
};

} // namespace NBrenmark
