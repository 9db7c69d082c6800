#pragma once

#include "io/dem/form.h"

namespace NBrenmark {

/// Below 20.0.0 a charge follows each particle and each triangle from 13.0.1 on; from 13.0.4 on a flag of the creator
/// block says whether it does.
inline bool storesOldCharge(const CInForm& f)
{
    return f.stores(from(13, 0, 1)) && (f.stores(below(13, 0, 4)) || f.stream.options.legacyCreatorFlag);
}

} // namespace NBrenmark
