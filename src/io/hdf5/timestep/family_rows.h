#pragma once
// What the families of contacts, bonds and collisions share: the number of rows.

#include "core/log.h"

#include <QtGlobal>
#include <string>

namespace NBrenmark {

/// Memory follows stored arrays only: what is announced and not there is told.
/// \param what  "contacts"
inline void tellIfFewer(const char* what, quint32 announced, quint32 held)
{
    if (held != announced)
        logMessage(eWarning, "HDF5 read",
                   std::to_string(announced) + ' ' + what + " are announced and " + std::to_string(held) +
                       " are there.");
}

} // namespace NBrenmark
