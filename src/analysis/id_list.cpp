// Ids as the selections hold them.
#include "analysis/id_list.h"

#include "analysis/entry_form.h"

#include "core/versioned_stream.h"

namespace NBrenmark::NSelection {

void CIdList::form(IEntryForm& f) { f.integers("ids", ids); }

bool CIdList::write(CVersionedStream& stream, IProgressController*)
{
    COutEntryForm f(stream);
    form(f);
    return stream.status() == QDataStream::Ok;
}

bool CIdList::read(CVersionedStream& stream, IProgressController*)
{
    CInEntryForm f(stream);
    form(f);
    return true;
}

} // namespace NBrenmark::NSelection
