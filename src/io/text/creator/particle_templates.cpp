// The text of particles whose shape is a mesh: of a part what is stored.
#include "io/text/text_writer.h"
#include "model/geometry/geometry_group.h"
#include "model/particle_template.h"

namespace NBrenmark {

void CTextWriter::writeParticleTemplate(const CParticleTemplate& particle)
{
    out.value("name", particle.name);
    out.value("materialName", particle.materialName);
    out.value("scale", particle.scale);
    out.group("domain", [&] { particle.domain.write(*this); });
    out.group("orientation", [&] { writeMatrix3(particle.orientation); });
    out.value("count", particle.geometry.count());
    for (const CGeometryGroup* part : particle.geometry.groups()) {
        if (part == nullptr)
            continue;
        out.group(std::to_string(part->index), [&] {
            out.array("vertices", part->coords); // m
            out.array("vertexIds", part->vertexIds);
            out.array("triangleIds", part->triangleIds);
            out.array("triangleNodes", part->triangleNodes);
            out.group("momentOfInertia", [&] { part->momentOfInertia.write(*this); });
        });
    }
}

void CTextWriter::writeTemplateMap(const TemplateMap& templates)
{
    CListSegments segments;
    for (const auto& entry : templates)
        out.group(segments.next(entry.first), [&] { entry.second->write(*this); });
}

} // namespace NBrenmark
