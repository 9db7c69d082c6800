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
    out.value("shearModulus", m.shearModulus); // Pa
    out.value("density", m.density);           // kg/m^3
    out.value("workFunction", m.workFunction); // J; for tribocharging alone
    out.value("type", m.type);                 // 1 bulk, else equipment
}

} // namespace NBrenmark
