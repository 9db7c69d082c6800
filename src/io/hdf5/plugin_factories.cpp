// The list of plug-in factories has one form and two places, by version.
#include "io/hdf5/plugin_factories.h"

#include "core/log.h"
#include "core/shortened.h"
#include "io/hdf5/hdf5_reader.h"
#include "io/hdf5/hdf5_writer.h"
#include "model/factories/plugin_factory_list.h"

namespace NBrenmark {

void readPluginFactories(CHdf5FormReader& in, CPluginParticleFactoryList& factories)
{
    factories.clear();
    in.group("PluginFactories/", [&] {
        in.children([&](const QString& name) {
            const std::string factory = "plug-in factory \"" + shortened(name) + "\" of the ";
            QString type;
            if (!in.attribute("type", type))
                return;
            if (type != QLatin1String("library")) {
                reportOnce(eLost, NLogTitle::hdf5Read,
                           factory + "kind \"" + shortened(type) + "\" isn't a plug-in: left out.", 1, shortened(name));
                return;
            }
            QString library;
            in.attribute("source", library);
            if (!factories.addFactory(library, name))
                reportOnce(eNotCarried, NLogTitle::hdf5Read, // the deck is sound, the library isn't there
                           factory + "library \"" + shortened(library) + "\" can't be bound here: left out.", 1,
                           shortened(name));
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
