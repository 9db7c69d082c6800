// Versions as people read them.
#include "core/version.h"

namespace NBrenmark {

QString versionText(quint32 version)
{
    return QStringLiteral("%1.%2.%3").arg(version >> 16).arg((version >> 8) & 0xFFu).arg(version & 0xFFu);
}

} // namespace NBrenmark
