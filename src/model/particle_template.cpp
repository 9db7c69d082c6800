// Templates hand themselves to the visitor.
#include "model/particle_template.h"

#include "visitors/file_visitor_reader.h"
#include "visitors/file_visitor_writer.h"

namespace NBrenmark {

void CParticleTemplate::read(IFileVisitorReader& v) { v.readParticleTemplate(*this); }
void CParticleTemplate::write(IFileVisitorWriter& v) const { v.writeParticleTemplate(*this); }

void TemplateMap::read(IFileVisitorReader& v) { v.readTemplateMap(*this); }
void TemplateMap::write(IFileVisitorWriter& v) const { v.writeTemplateMap(*this); }

} // namespace NBrenmark
