#include "io/hdf5/plugin_factories.h"

#include "core/log.h"
#include "io/hdf5/hdf5_reader.h"
#include "io/hdf5/hdf5_writer.h"
#include "physics/plugins/plugin_factory_list.h"

namespace NBrenmark {

void readPluginFactories(CHdf5FormReader& in, CPluginParticleFactoryList& factories)
{
    factories.clear();
    in.group("PluginFactories/", [&] {
        in.children([&](const QString& name) {
            const std::string factory = "plug-in factory \"" + name.toStdString() + "\" of the ";
            QString type;
            in.attribute("type", type);
            if (type != QLatin1String("library")) {
                logMessage(eWarning, "HDF5 read",
                           factory + "kind \"" + type.toStdString() + "\" is no plug-in: left out.", 0, 1);
                return;
            }
            QString library;
            in.attribute("source", library);
            if (!factories.addFactory(library, name))
                logMessage(eWarning, "HDF5 read",
                           factory + "library \"" + library.toStdString() + "\" can't be bound here: left out.", 0, 1);
        });
    });
}

void CHdf5CreatorDataReader::readPluginParticleFactoryList(CPluginParticleFactoryList& factories)
{
    if (in().since(30, 0, 5))
        readPluginFactories(in(), factories);
}

void CHdf5CreatorDataWriter::writePluginParticleFactoryList(const CPluginParticleFactoryList&)
{
    out().group("PluginFactories/", [] {}); // none can be bound, so none is in the list
}

} // namespace NBrenmark
