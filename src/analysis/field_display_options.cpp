// The record of how a field is drawn, in the order of the file.
#include "analysis/field_display_options.h"

#include "analysis/entry_form.h"

#include "core/versioned_stream.h"

namespace NBrenmark::NField {

void CFieldDisplayOptions::form(IEntryForm& f)
{
    f.strictFlag("flag1", flags[0]);
    f.rgb("colour", colour);
    f.real("real1", reals[0]);
    f.strictFlag("flag2", flags[1]);
    f.integer("integer1", integers[0]);
    f.part("scale", scale);

    f.real("real2", reals[1]);
    f.strictFlag("flag3", flags[2]);
    f.real("real3", reals[2]);
    f.real("real4", reals[3]);
    f.integer("integer2", integers[1]);
    f.strictFlag("flag4", flags[3]);
    f.real("real5", reals[4]);
    f.strictFlag("flag5", flags[4]);
    f.real("real6", reals[5]);
    f.real("real7", reals[6]);

    f.integer("integer3", integers[2]);
    f.integer("integer4", integers[3]);
    f.integer("integer5", integers[4]);
    f.real("real8", reals[7]);
    f.integer("integer6", integers[5]);
    f.integer("integer7", integers[6]);
    f.integer("integer8", integers[7]);
    f.integer("integer9", integers[8]);
    f.integer("integer10", integers[9]);
}

bool CFieldDisplayOptions::write(CVersionedStream& stream, IProgressController*)
{
    COutEntryForm f(stream);
    form(f);
    return stream.status() == QDataStream::Ok;
}

bool CFieldDisplayOptions::read(CVersionedStream& stream, IProgressController*)
{
    CInEntryForm f(stream);
    form(f);
    return true;
}

} // namespace NBrenmark::NField
