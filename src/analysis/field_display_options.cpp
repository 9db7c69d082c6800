// The record of how a field is drawn, in the order of the file.
#include "analysis/field_display_options.h"

namespace NBrenmark::NField {

void CFieldDisplayOptions::form(IEntryForm& f)
{
    f.strictFlag8("flag1", flags[0]);
    f.rgb("colour", colour);
    f.f64("real1", reals[0]);
    f.strictFlag8("flag2", flags[1]);
    f.i32("integer1", integers[0]);
    f.part("scale", scale);

    f.f64("real2", reals[1]);
    f.strictFlag8("flag3", flags[2]);
    f.f64("real3", reals[2]);
    f.f64("real4", reals[3]);
    f.i32("integer2", integers[1]);
    f.strictFlag8("flag4", flags[3]);
    f.f64("real5", reals[4]);
    f.strictFlag8("flag5", flags[4]);
    f.f64("real6", reals[5]);
    f.f64("real7", reals[6]);

    f.i32("integer3", integers[2]);
    f.i32("integer4", integers[3]);
    f.i32("integer5", integers[4]);
    f.f64("real8", reals[7]);
    f.i32("integer6", integers[5]);
    f.i32("integer7", integers[6]);
    f.i32("integer8", integers[7]);
    f.i32("integer9", integers[8]);
    f.i32("integer10", integers[9]);
}

} // namespace NBrenmark::NField
