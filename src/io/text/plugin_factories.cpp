// The text of the list of plug-in factories.
#include "io/text/text_writer.h"
#include "model/factories/plugin_factory_list.h"

namespace NBrenmark {

void CTextWriter::writePluginParticleFactoryList(const CPluginParticleFactoryList& factories)
{
    out.value("count", factories.count());
}

} // namespace NBrenmark
