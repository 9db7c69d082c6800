// The suffix of a shared library.
#include "platform/plugin_library.h"

namespace NBrenmark {

QString pluginExtension()
{
#if defined(Q_OS_WIN)
    return QStringLiteral(".dll");
#elif defined(Q_OS_MACOS)
    return QStringLiteral(".dylib");
#else
    return QStringLiteral(".so");
#endif
}

} // namespace NBrenmark
