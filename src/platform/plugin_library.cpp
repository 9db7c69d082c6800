// The suffix of a shared library, and the form in which Linux keeps it.
#include "platform/plugin_library.h"

#include <QFile>

#if defined(Q_OS_LINUX)
#include <elf.h>
#include <link.h>

#include <cstring>
#endif

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

#if defined(Q_OS_LINUX)
/// Reads a structure of a file as it is in memory. \return false if the file ends before
template <class T>
static bool readAt(QFile& file, quint64 place, T& record)
{
    return file.seek(static_cast<qint64>(place)) &&
           file.read(reinterpret_cast<char*>(&record), sizeof record) == qint64(sizeof record);
}

bool isLibraryCutShort(const QString& path)
{
    QFile file(path);
    ElfW(Ehdr) header;
    constexpr int ownClass = sizeof(void*) == 8 ? ELFCLASS64 : ELFCLASS32;
    if (!file.open(QIODevice::ReadOnly) || !readAt(file, 0, header) ||
        std::memcmp(header.e_ident, ELFMAG, SELFMAG) != 0 || header.e_ident[EI_CLASS] != ownClass)
        return false;
    const auto size = static_cast<quint64>(file.size());
    if (header.e_phoff > size)
        return true;
    for (quint64 i = 0; i < header.e_phnum; ++i) {
        ElfW(Phdr) segment;
        if (!readAt(file, header.e_phoff + i * sizeof segment, segment))
            return true;
        if (segment.p_type == PT_LOAD && (segment.p_offset > size || segment.p_filesz > size - segment.p_offset))
            return true;
    }
    return false;
}
#else
bool isLibraryCutShort(const QString& /*path*/) { return false; }
#endif

} // namespace NBrenmark
