// Any bytes in place of a configuration file. Whatever is read is written in a form that reads the same again.

#include "config/config_file.h"
#include "config/config_manager.h"
#include "fuzz/memory_file.h"

#include <QBuffer>

#include <cstdlib>

using namespace NBrenmark;
using namespace NBrenmark::NConfig;

static QByteArray written(CConfigManager& manager)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    if (writeConfiguration(buffer, *manager.rootHandle()) != eConfigDone)
        std::abort();
    return buffer.data();
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    static const CMemoryFile file;
    file.hold(bytes, size);
    CConfigManager manager;
    // A part of a file that is refused stays in the tree, and is written like any other.
    readConfigurationFile(file.path(), *manager.rootHandle(), {});

    const QByteArray first = written(manager);
    file.hold(reinterpret_cast<const std::uint8_t*>(first.constData()), std::size_t(first.size()));
    CConfigManager again;
    if (readConfigurationFile(file.path(), *again.rootHandle(), {}) != eConfigDone || written(again) != first)
        std::abort();
    return 0;
}
