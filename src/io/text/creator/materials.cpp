// The text of materials and of their interactions.
#include "materials/materials.h"
#include "io/text/text_writer.h"
#include "materials/interactions.h"

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

void CTextWriter::writeInteractionMap(const InteractionMap& interactions)
{
    const auto& entries = interactions.entries;
    for (auto entry = entries.begin(); entry != entries.end(); ++entry)
        out.group(NText::segment(entry.key()), [&] { entry.value()->write(*this); });
}

void CTextWriter::writeInteraction(const CInteraction& i)
{
    out.value("restitution", i.restitution);
    out.value("staticFriction", i.staticFriction);
    out.value("rollingFriction", i.rollingFriction);
}

} // namespace NBrenmark
