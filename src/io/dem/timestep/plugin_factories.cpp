// Particle factories of plug-in libraries: a list with entries is refused.
#include "physics/plugins/plugin_factory_list.h"

#include "io/dem/dem_reader.h"
#include "io/dem/dem_writer.h"

namespace NBrenmark {

static constexpr qint64 leastFactoryBytes = 8;

void CDemTimestepDataReader::readPluginParticleFactoryList(CPluginParticleFactoryList&)
{
    CInForm f = in();
    const quint32 count = f.count("plug-in factory", leastFactoryBytes);
    if (count == 0)
        return;
    QString kind;
    QString name;
    f.text(kind);
    f.text(name);
    throw not_carried_error("the plug-in factory \"" + name.toStdString() + '"');
}

void CDemTimestepDataWriter::writePluginParticleFactoryList(const CPluginParticleFactoryList& factories)
{
    out().i32(factories.count());
}

} // namespace NBrenmark
