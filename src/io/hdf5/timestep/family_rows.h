#pragma once
// What the families of contacts, bonds and collisions share: the number of rows.

#include "core/log.h"

#include <QtGlobal>
#include <string>

namespace NBrenmark {

/// Memory follows stored arrays only: a stored number that they contradict is reported.
/// \param what  "contacts"
inline void reportIfOther(const char* what, quint32 announced, quint32 held)
{
    const std::string text =
        std::to_string(announced) + ' ' + what + " are announced and " + std::to_string(held) + " are there.";
    if (held < announced)
        report(eLost, NLogTitle::hdf5Read, text, announced - held);
    else if (held > announced)
        report(eRepaired, NLogTitle::hdf5Read, text, held - announced);
}

} // namespace NBrenmark
