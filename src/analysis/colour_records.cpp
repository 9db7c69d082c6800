// The layouts of a colour scale and its legend, which the drawing programs have changed four times.
#include "analysis/colour_records.h"

#include "analysis/entry_form.h"

namespace NBrenmark {

static const char* const colourNames[CColour::colourCount] = {"colourMin",   "colourLow1",  "colourLow2",
                                                              "colourLow3",  "colourMid",   "colourHigh1",
                                                              "colourHigh2", "colourHigh3", "colourMax"};
static constexpr size_t middle = CColour::colourCount / 2;
static constexpr size_t last = CColour::colourCount - 1;

void CColourChart::form(IEntryForm& f)
{
    f.f64("width", width);
    f.f64("height", height);
    f.i32("intervals", intervals);
    f.text("title", title);
    if (f.since(24, 0, 32))
        f.colour("textColour", textColour);
    if (f.since(30, 0, 3)) // at 30.0.2 the scale brings them
        f.i32("levels", levels);
    f.i32("alignment", alignment);
    f.strictFlag8("autoTitle", autoTitle);
    f.strictFlag8("enabled", enabled);
    if (f.since(23, 0, 3)) {
        f.i32("digits", digits);
        f.strictFlag8("useDecimal", useDecimal);
    }
    if (f.since(30, 0, 2))
        f.strictFlag8("smooth", smooth);
    f.point("startPoint", startPoint);
}

/// An older scale runs evenly from its first colour over the middle to its last one.
void CColour::spreadThree()
{
    for (size_t i = 1; i < middle; ++i) {
        const double part = static_cast<double>(i) / static_cast<double>(middle);
        colours[i] = colours[0] + (colours[middle] - colours[0]) * part;
        colours[middle + i] = colours[middle] + (colours[last] - colours[middle]) * part;
    }
}

void CColour::form(IEntryForm& f)
{
    f.f64("minimum", minimum);
    f.f64("maximum", maximum);
    f.strictFlag8("autoMinimum", autoMinimum);
    f.strictFlag8("autoMaximum", autoMaximum);
    const size_t step = f.since(30, 0, 2) ? 1 : middle;
    for (size_t i = 0; i < colourCount; i += step)
        f.point(colourNames[i], colours[i]);
    if (step != 1)
        spreadThree();
    if (f.since(30, 0, 2) && !f.since(30, 0, 3))
        f.i32("levels", chart.levels);
    f.point("staticColour", staticColour);
    f.part("chart", chart);
}

} // namespace NBrenmark
