#include "physics/plugins/plugin_factory_list.h"

#include "visitors/file_visitor_reader.h"
#include "visitors/file_visitor_writer.h"

namespace NBrenmark {

void CPluginParticleFactoryList::read(IFileVisitorReader& v) { v.readPluginParticleFactoryList(*this); }

void CPluginParticleFactoryList::write(IFileVisitorWriter& v) const { v.writePluginParticleFactoryList(*this); }

} // namespace NBrenmark
