// The text of material blocks.
#include "io/text/text_writer.h"
#include "model/material_block.h"
#include "properties/custom_property_data.h"

namespace NBrenmark {

/// A block's properties are outside of the deck's definitions, so each shows its own.
static void blockProperties(CTextOutput& out, CTextWriter& writer, const std::vector<SBlockProperty>& properties)
{
    out.group("properties", [&] {
        CListSegments segments;
        for (const SBlockProperty& property : properties) {
            const std::string segment = segments.next(property.metaData->name);
            out.group(segment, [&] {
                out.value("dataType", property.metaData->dataType);
                out.value("numberOfElements", property.metaData->numberOfElements);
                out.value("unitsType", property.metaData->unitsType); // code of the quantity, not of a unit
                out.group("values", [&] { property.values->write(writer); });
            });
        }
    });
}

void CTextWriter::writeMaterialBlocks(const CMaterialBlockMap& blocks)
{
    for (auto entry = blocks.begin(); entry != blocks.end(); ++entry)
        out.group(NText::segment(entry.key()), [&] { entry.value()->write(*this); });
}

void CTextWriter::writeMaterialBlock(const CMaterialBlock& block)
{
    out.value("name", block.name);
    out.value("materialName", block.materialName);
    out.group("boundingBox", [&] { block.boundingBox.write(*this); });
    out.group("particles", [&] {
        CListSegments segments;
        for (const auto& particles : block.particleData)
            out.group(segments.next(particles->name), [&] { particles->write(*this); });
    });
    const auto contacts = [this](const char* name, const std::shared_ptr<CMaterialBlockContactData>& data) {
        if (data)
            out.group(name, [&] { data->write(*this); });
    };
    contacts("surfaceSurfaceContacts", block.surfaceSurfaceContacts);
    contacts("surfaceGeometryContacts", block.surfaceGeometryContacts);
}

void CTextWriter::writeMaterialBlockParticleData(const CMaterialBlockParticleData& p)
{
    out.value("sphereCount", p.sphereCount);
    out.array("ids", p.ids);
    out.array("scale", p.scale);
    out.array("velocity", p.velocity);
    out.array("position", p.position);
    out.array("orientation", p.orientation);
    out.array("angularVelocity", p.angularVelocity);
    blockProperties(out, *this, p.customProperties);
}

void CTextWriter::writeMaterialBlockContactData(const CMaterialBlockContactData& c)
{
    out.array("contacts", c.contacts);
    blockProperties(out, *this, c.customProperties);
}

} // namespace NBrenmark
