// Ids as the selections hold them.
#include "analysis/id_list.h"

#include "analysis/entry_form.h"

#include <QDataStream>

namespace NBrenmark::NSelection {

void CIdList::form(IEntryForm& f) { f.integers("ids", ids); }

bool CIdList::write(QDataStream& stream, IProgressController*)
{
    COutEntryForm f(stream);
    form(f);
    return stream.status() == QDataStream::Ok;
}

bool CIdList::read(QDataStream& stream, IProgressController*)
{
    CInEntryForm f(stream);
    form(f);
    return true;
}

} // namespace NBrenmark::NSelection
