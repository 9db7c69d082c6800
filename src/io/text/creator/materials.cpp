// The text of materials.
#include "materials/materials.h"
#include "io/text/text_writer.h"

namespace NBrenmark {

void CTextWriter::writeMaterialMap(const MaterialMap& materials)
{
    for (auto entry = materials.begin(); entry != materials.end(); ++entry)
        out.group(NText::segment(entry.key()), [&] { entry.value()->write(*this); });
}

void CTextWriter::writeMaterial(const CMaterial& m)
{
    out.value("name", m.name);
    out.value("poissonsRatio", m.poissonsRatio);
    out.value("shearModulus", m.shearModulus);
    out.value("density", m.density);
    out.value("workFunction", m.workFunction);
    out.value("type", m.type);
}

} // namespace NBrenmark
