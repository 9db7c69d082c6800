#include "io/hdf5/plugin_factories.h"

#include "core/log.h"
#include "io/hdf5/counted.h"
#include "io/hdf5/hdf5_reader.h"
#include "io/hdf5/hdf5_writer.h"
#include "physics/plugins/plugin_factory_list.h"

namespace NBrenmark {

void readPluginFactories(CHdf5FormReader& in, CPluginParticleFactoryList& factories)
{
    factories.clear();
    in.group("PluginFactories/", [&] {
        in.children([&](const QString& name) {
            std::string type;
            in.attribute("type", type);
            if (type != "library") // others never were plug-ins
                return;
            std::string source;
            in.attribute("source", source);
            logMessage(eWarning, "HDF5 read",
                       "The factory \"" + name.toStdString() + "\" of the plug-in library \"" + source +
                           "\" is skipped: no such factory could be made.");
        });
    });
}

void CHdf5CreatorDataReader::readPluginParticleFactoryList(CPluginParticleFactoryList& factories)
{
    if (in().since(30, 0, 5))
        readPluginFactories(in(), factories);
}

void CHdf5CreatorDataWriter::writePluginParticleFactoryList(const CPluginParticleFactoryList& factories)
{
    out().group("PluginFactories/", [&] { refuseAny(factories.count(), "plug-in factory", "plug-in factories"); });
}

} // namespace NBrenmark
