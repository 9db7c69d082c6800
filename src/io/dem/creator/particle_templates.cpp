// Particles whose shape is a mesh. Until 24.0.21 their parts are whole geometry groups, from then on bare meshes.
#include "model/particle_template.h"

#include "io/dem/dem_reader.h"
#include "io/dem/dem_writer.h"
#include "io/dem/geometry_forms.h"
#include "io/dem/repeated_names.h"
#include "io/dem/unmoved_ids.h"

namespace NBrenmark {

static constexpr qint64 leastTemplateBytes = 4 + 48 + 12 + 4 + 8; // no parts, the domain, an empty name, the scale
static constexpr qint64 leastPartBytes = 4 + 12;                  // its index, two counts and the mask

// ---------------------------------------------------------------- a part

struct SPartHead
{
    quint32 vertices = 0;
    quint32 triangles = 0;
    quint32 mask = eTriangleIds | eTriangleNodes;
};

template <class TForm, class TGroup, class THead>
static void partForm(TForm& f, TGroup& group, THead& head)
{
    f.i32(head.vertices);
    f.i32(head.triangles);
    f.i32(head.mask); // ETriangleField
    f.group(false, head.triangles, [&](auto& arrays) {
        arrays.elements("vertex ids", group.vertexIds, head.vertices);
        arrays.elements("vertices", group.coords, head.vertices); // m
        triangleForm(arrays, head.mask, group.triangleIds, group.triangleNodes, group.triangleForces,
                     group.electrostatic.charges);
    });
}

static void readParts(CDemReader& reader, CInForm& f, GeometryGroups& parts)
{
    parts.clear();
    const quint32 count = f.count("part of a particle template", leastPartBytes);
    for (quint32 i = 0; i < count; ++i) {
        auto part = std::make_unique<CGeometryGroup>(nullptr);
        SPartHead head;
        f.i32(part->index);
        partForm(f, *part, head);
        if (f.stores(from(30, 0, 11))) // before, it isn't known
            part->momentOfInertia.read(reader);
        part->dataMask = head.mask;
        part->uniqueId = part->index; // a part has no other id in the file
        part->settle();
        parts.add(part.release(), false);
    }
    parts.settleState(true);
}

static void writeParts(CDemWriter& writer, COutForm& f, const GeometryGroups& parts)
{
    f.i32(parts.count());
    for (const CGeometryGroup* part : parts.groups()) {
        if (part == nullptr)
            continue;
        SPartHead head;
        head.vertices = static_cast<quint32>(part->vertexIds.size());
        head.triangles = static_cast<quint32>(part->triangleNodes.size());
        f.i32(part->index);
        partForm(f, *part, head);
        part->momentOfInertia.write(writer);
    }
}

// ---------------------------------------------------------------- a template

/// Below 24.0.21. The material is that of the mesh.
static void readWithGroups(CDemReader& reader, CInForm& f, CParticleTemplate& particle)
{
    const bool before = f.stream.options.useNullPropertyManager;
    f.stream.options.useNullPropertyManager = true;
    particle.geometry.read(reader);
    f.stream.options.useNullPropertyManager = before;
    particle.domain.read(reader);
    C3DPoint dropped; // follows from the mesh
    f.point(dropped);
    reader.readMatrix3(particle.orientation);
    f.text(particle.name);
    f.f64(particle.scale);
    for (const CGeometryGroup* part : particle.geometry.groups())
        if (part != nullptr && particle.materialName.isEmpty())
            particle.materialName = part->materialName;
}

void CDemCreatorDataReader::readParticleTemplate(CParticleTemplate& particle)
{
    const CUnmovedIds ids;
    CInForm f = in();
    if (!f.stores(from(24, 0, 21))) {
        readWithGroups(*this, f, particle);
        return;
    }
    readParts(*this, f, particle.geometry);
    particle.domain.read(*this);
    f.text(particle.name);
    f.f64(particle.scale);
    f.text(particle.materialName);
    if (f.stores(from(30, 0, 11))) // absent from 24.0.21 to here
        readMatrix3(particle.orientation);
}

void CDemCreatorDataWriter::writeParticleTemplate(const CParticleTemplate& particle)
{
    COutForm f = out();
    writeParts(*this, f, particle.geometry);
    particle.domain.write(*this);
    f.text(particle.name);
    f.f64(particle.scale);
    f.text(particle.materialName);
    writeMatrix3(particle.orientation);
}

void CDemCreatorDataReader::readTemplateMap(TemplateMap& templates)
{
    templates.clear();
    const quint32 count = in().count("particle template", leastTemplateBytes);
    for (quint32 i = 0; i < count; ++i) {
        auto particle = std::make_unique<CParticleTemplate>();
        particle->read(*this);
        const QString name = particle->name;
        if (templates.count(name) > 0)
            reportRepeated("particle template", name);
        templates[name] = std::move(particle);
    }
}

void CDemCreatorDataWriter::writeTemplateMap(const TemplateMap& templates)
{
    out().i32(static_cast<quint32>(templates.size()));
    for (const auto& [name, particle] : templates)
        particle->write(*this);
}

} // namespace NBrenmark
