// Particle factories of plug-in libraries. One whose library can't be bound is told and left out.
#include "physics/plugins/plugin_factory_list.h"

#include "core/log.h"
#include "io/dem/dem_reader.h"
#include "io/dem/dem_writer.h"

namespace NBrenmark {

static constexpr qint64 leastFactoryBytes = 2 * 4;
static constexpr SGate gateFactoryLibrary = from(23, 0, 0);

void CDemTimestepDataReader::readPluginParticleFactoryList(CPluginParticleFactoryList& factories)
{
    CInForm f = in();
    const quint32 count = f.count("plug-in factory", leastFactoryBytes);
    factories.clear();
    for (quint32 i = 0; i < count; ++i) {
        QString kind;
        QString name;
        f.text(kind);
        f.text(name);
        QString library = name; // once both were the same
        if (f.stores(gateFactoryLibrary))
            f.text(library);
        if (kind != QLatin1String("library")) {
            logMessage(eWarning, "Legacy read",
                       stream->place.section(',', 0, 0).toStdString() + ": factory \"" + name.toStdString() +
                           "\" of the kind \"" + kind.toStdString() + "\" is no plug-in: left out.",
                       0, 1);
            continue;
        }
        if (!factories.addFactory(library, name))
            logMessage(eWarning, "Legacy read",
                       stream->place.section(',', 0, 0).toStdString() + ": plug-in factory \"" + name.toStdString() +
                           "\" of the library \"" + library.toStdString() + "\" can't be bound here: left out.",
                       0, 1);
    }
}

void CDemTimestepDataWriter::writePluginParticleFactoryList(const CPluginParticleFactoryList& factories)
{
    out().i32(factories.count());
}

} // namespace NBrenmark
