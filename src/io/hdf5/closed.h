#pragma once
// How every HDF5 object of a write ends: by an explicit call whose result counts.

#include <utility>

namespace NBrenmark {

/// Runs body on an HDF5 object, then closes it by the call that reports.
/// Destructors of that interface swallow errors: a full disk shows in close() or nowhere.
/// If body throws, the destructor closes in silence, for the first error is the one to report.
template <class TObject, class TBody>
void closed(TObject object, TBody&& body)
{
    body(object);
    object.close();
}

} // namespace NBrenmark
