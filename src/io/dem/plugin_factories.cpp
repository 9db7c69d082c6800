// Particle factories of plug-in libraries. One whose library can't be bound is reported and left out.
#include "model/factories/plugin_factory_list.h"

#include "core/log.h"
#include "core/shortened.h"
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
            reportOnce(eLost, NLogTitle::legacyRead,
                       "factory \"" + shortened(name) + "\" of the kind \"" + shortened(kind) +
                           "\" isn't a plug-in: left out.",
                       1, shortened(name));
            continue;
        }
        if (!factories.addFactory(library, name))
            reportOnce(eNotCarried, NLogTitle::legacyRead, // the deck is sound, the library isn't there
                       "plug-in factory \"" + shortened(name) + "\" of the library \"" + shortened(library) +
                           "\" can't be bound here: left out.",
                       1, shortened(name));
    }
}

void CDemTimestepDataWriter::writePluginParticleFactoryList(const CPluginParticleFactoryList& factories)
{
    out().i32(factories.count());
}

} // namespace NBrenmark
