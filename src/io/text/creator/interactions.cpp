// The text of the interactions of pairs of materials.
#include "materials/interactions.h"
#include "io/text/text_writer.h"

namespace NBrenmark {

void CTextWriter::writeInteractionMap(const InteractionMap& interactions)
{
    const auto& entries = interactions.entries;
    for (auto entry = entries.begin(); entry != entries.end(); ++entry)
        out.group(NText::segment(entry.key()), [&] { entry.value()->write(*this); });
}

void CTextWriter::writeInteraction(const CInteraction& i)
{
    out.value("restitution", i.restitution); // speed of parting to speed of approach
    out.value("staticFriction", i.staticFriction);
    out.value("rollingFriction", i.rollingFriction);
}

} // namespace NBrenmark
