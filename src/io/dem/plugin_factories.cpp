// Particle factories of plug-in libraries. One whose library can't be bound keeps its name and its library.
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
        if (kind != QLatin1String(CPluginParticleFactoryList::word)) {
            reportOnce(eLost, NLogTitle::legacyRead,
                       "factory \"" + shortened(name) + "\" of the kind \"" + shortened(kind) +
                           "\" isn't a plug-in: left out.",
                       1, shortened(name));
            continue;
        }
        if (factories.addFactory(library, name) != nullptr)
            continue;
        factories.keepUnbound(library, name);
        reportOnce(eRemark, NLogTitle::legacyRead,
                   "plug-in factory \"" + shortened(name) + "\" of the library \"" + shortened(library) +
                       "\" isn't known here; both names are kept.",
                   1, shortened(name));
    }
    factories.isRead = true;
}

void CDemTimestepDataWriter::writePluginParticleFactoryList(const CPluginParticleFactoryList& factories)
{
    COutForm f = out();
    const std::vector<SPluginFactoryEntry> entries = factories.entries();
    f.length("plug-in factory", leastFactoryBytes, entries);
    for (const SPluginFactoryEntry& entry : entries) {
        f.text(QString(CPluginParticleFactoryList::word));
        f.text(entry.name);
        f.text(entry.library);
    }
}

} // namespace NBrenmark
