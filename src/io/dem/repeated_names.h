#pragma once
// Lists by name in which a name comes twice: the later entry counts.

#include "core/log.h"
#include "core/shortened.h"

namespace NBrenmark {

/// Reports that an entry takes the place of one that came under its name before.
/// \param noun  such as "material"
template <class TName>
void reportRepeated(const char* noun, const TName& name)
{
    report(eLost, NLogTitle::legacyRead,
           std::string(noun) + " \"" + shortened(name) + "\" is stored twice: the first is dropped", 1,
           shortened(name));
}

} // namespace NBrenmark
