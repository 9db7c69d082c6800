// The list of plug-in factories has one form and two places, by version.
#include "io/hdf5/plugin_factories.h"

#include "core/log.h"
#include "core/shortened.h"
#include "io/hdf5/hdf5_reader.h"
#include "io/hdf5/hdf5_writer.h"
#include "io/hdf5/link_names.h"
#include "model/factories/plugin_factory_list.h"

#include <set>

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
            if (type != QLatin1String(CPluginParticleFactoryList::word)) {
                reportOnce(eLost, NLogTitle::hdf5Read,
                           factory + "kind \"" + shortened(type) + "\" isn't a plug-in: left out.", 1, shortened(name));
                return;
            }
            QString library;
            in.attribute("source", library);
            if (factories.addFactory(library, name) != nullptr)
                return;
            factories.keepUnbound(library, name);
            reportOnce(eRemark, NLogTitle::hdf5Read,
                       factory + "library \"" + shortened(library) + "\" isn't known here; both names are kept.", 1,
                       shortened(name));
        });
    });
    factories.isRead = true;
}

void CHdf5CreatorDataReader::readPluginParticleFactoryList(CPluginParticleFactoryList& factories)
{
    if (in().since(30, 0, 5))
        readPluginFactories(in(), factories);
}

void CHdf5CreatorDataWriter::writePluginParticleFactoryList(const CPluginParticleFactoryList& factories)
{
    out().group("PluginFactories/", [&] {
        std::set<QString> written;
        for (const SPluginFactoryEntry& entry : factories.entries()) {
            const bool isTwice = !written.insert(entry.name).second;
            if (isTwice || !isLinkName(entry.name.toStdString())) {
                reportOnce(eNotCarried, NLogTitle::hdf5Write,
                           "The plug-in factory \"" + shortened(entry.name) + "\" is left out: " +
                               (isTwice ? "there is another one of that name." : "no group can have that name."),
                           1, shortened(entry.name));
                continue;
            }
            out().group(entry.name.toStdString(), [&] {
                out().attribute("type", QString(CPluginParticleFactoryList::word));
                out().attribute("source", entry.library);
            });
        }
    });
}

} // namespace NBrenmark
