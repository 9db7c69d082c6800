// Selections that are carried as bytes: those with a block of their own, and those in the block of the others.
#include "analysis/carried_selections.h"

#include "visitors/settings_streams.h"

#include <algorithm>

namespace NBrenmark::NSelection {

void CCarriedSelections::clear(bool notify)
{
    list.clear();
    setModified(notify);
}

void CCarriedSelections::clearHome()
{
    list.erase(
        std::remove_if(list.begin(), list.end(), [](const SCarriedSelection& selection) { return selection.isAtHome; }),
        list.end());
}

bool CCarriedSelections::hasContent() const
{
    return std::any_of(list.begin(), list.end(),
                       [](const SCarriedSelection& selection) { return !selection.isAtHome; });
}

bool CCarriedSelections::write(CVersionedStream& stream, IProgressController*)
{
    return NSettingsFamily::write(stream, *this);
}

bool CCarriedSelections::read(CVersionedStream& stream, IProgressController*)
{
    return NSettingsFamily::read(stream, *this);
}

} // namespace NBrenmark::NSelection
