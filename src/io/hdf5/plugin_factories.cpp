#include "io/hdf5/plugin_factories.h"

#include "io/hdf5/counted.h"
#include "io/hdf5/hdf5_reader.h"
#include "io/hdf5/hdf5_writer.h"
#include "physics/plugins/plugin_factory_list.h"

namespace NBrenmark {

void readPluginFactories(CHdf5FormReader& in, CPluginParticleFactoryList& factories)
{
    factories.clear();
    in.group("PluginFactories/", [&] {
        quint64 libraries = 0;
        for (hsize_t i = 0; i < in.childCount(); ++i)
            in.group(in.childName(i), [&] {
                std::string type;
                in.attribute("type", type);
                libraries += type == "library" ? 1 : 0; // others never were plug-ins
            });
        refuseAny(libraries, "plug-in factory", "plug-in factories");
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
