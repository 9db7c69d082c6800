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
        for (hsize_t i = 0; i < in.childCount(); ++i) {
            const std::string name = in.childName(i);
            in.group(name, [&] {
                std::string type;
                in.attribute("type", type);
                if (type != "library") // never was a plug-in
                    return;
                std::string library;
                in.attribute("source", library);
                if (!factories.addFactory(QString::fromStdString(library), QString::fromStdString(name)))
                    logMessage(eWarning, "HDF5 read",
                               "plug-in factory \"" + name + "\" of the library \"" + library +
                                   "\" can't be bound here: left out.",
                               0, 1);
            });
        }
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
