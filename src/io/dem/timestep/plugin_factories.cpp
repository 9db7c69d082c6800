// Particle factories of plug-in libraries. None of them can be bound here, and one that can't has
// nothing behind its names: the list is told and left empty.
#include "physics/plugins/plugin_factory_list.h"

#include "core/log.h"
#include "io/dem/dem_reader.h"
#include "io/dem/dem_writer.h"

namespace NBrenmark {

static constexpr qint64 leastFactoryBytes = 2 * 4;

void CDemTimestepDataReader::readPluginParticleFactoryList(CPluginParticleFactoryList& factories)
{
    CInForm f = in();
    factories.clear();
    const quint32 count = f.count("plug-in factory", leastFactoryBytes);
    for (quint32 i = 0; i < count; ++i) {
        QString kind;
        QString name;
        QString library;
        f.text(kind);
        f.text(name);
        f.text(library, from(23, 0, 0), name);
        const QString what =
            kind == QLatin1String("library")
                ? QStringLiteral("plug-in factory \"%1\" of the library \"%2\" can't be bound").arg(name, library)
                : QStringLiteral("factory \"%1\" of the kind \"%2\" is no plug-in").arg(name, kind);
        // Each timestep repeats the list.
        logMessage(eWarning, "Legacy read", what.toStdString() + ": skipped", 0, 1);
    }
}

void CDemTimestepDataWriter::writePluginParticleFactoryList(const CPluginParticleFactoryList& factories)
{
    out().i32(factories.count());
}

} // namespace NBrenmark
