#pragma once
// How a field is drawn: a record of the drawing programs, which is carried along. What its single numbers stand for
// is up to them; here they have the places that the file gives them.

#include "analysis/colour_records.h"
#include "analysis/entry_form.h"

#include <array>

namespace NBrenmark::NField {

class CFieldDisplayOptions : public IFormed
{
public:
    void form(IEntryForm& f) override;

    QColor colour = Qt::black;
    CColour scale;
    std::array<bool, 5> flags{};
    std::array<double, 8> reals{};
    std::array<qint32, 10> integers{};
};

} // namespace NBrenmark::NField
