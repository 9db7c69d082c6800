// Versions as people read them.
#include "core/version.h"

#include "core/version_history.h"

#include <iterator>

namespace NBrenmark {

static constexpr bool isInOrder()
{
    for (std::size_t i = 1; i < std::size(fileVersions); ++i)
        if (fileVersions[i - 1].version >= fileVersions[i].version)
            return false;
    return fileVersions[std::size(fileVersions) - 1].version == currentFileVersion();
}
static_assert(isInOrder(), "one row a version, the one that is written last");

QString versionText(quint32 version)
{
    return QStringLiteral("%1.%2.%3").arg(version >> 16).arg((version >> 8) & 0xFFu).arg(version & 0xFFu);
}

} // namespace NBrenmark
