#pragma once
// Numbers of things, for messages.

#include <QtGlobal>
#include <string>

namespace NBrenmark {

/// "1 contact", "12 contacts".
inline std::string counted(qint64 count, const char* noun)
{
    return std::to_string(count) + ' ' + noun + (count == 1 ? "" : "s");
}

} // namespace NBrenmark
