// Material blocks: stored beds of particles, with custom properties of their own.

#include "io/hdf5/hdf5_reader.h"
#include "io/hdf5/hdf5_writer.h"

#include "core/log.h"
#include "core/shortened.h"
#include "io/hdf5/timestep/family_rows.h"
#include "model/material_block.h"
#include "properties/custom_property_data.h"

namespace NBrenmark {

using Properties = std::vector<SBlockProperty>;
using ParticleData = std::shared_ptr<CMaterialBlockParticleData>;

// ---------------------------------------------------------------- custom properties

static void readBlockProperties(CHdf5Reader& reader, CHdf5FormReader& in, Properties& properties, quint32 items)
{
    in.group("CustomProperties/", [&] {
        properties.resize(in.childCount());
        in.numbered(properties, [&](SBlockProperty& property) {
            std::string name;
            qint32 dataType = 0;
            quint32 elements = 0;
            qint32 units = 0;
            in.attribute("name", name);
            in.attribute("data type", dataType);
            in.attribute("number of elements", elements); // values for each particle or contact
            in.attribute("units", units);                 // which kind of quantity it is, not the unit of the numbers
            property.metaData = std::make_shared<CCustomPropertyMetaData>(name, static_cast<unsigned int>(dataType),
                                                                          elements, static_cast<unsigned int>(units));
            property.values = std::make_shared<CCustomPropertyValueList>(*property.metaData, false);
            property.values->resize(items);
            property.values->read(reader);
        });
    });
}

static void writeBlockProperties(CHdf5Writer& writer, CHdf5FormWriter& out, const Properties& properties)
{
    out.group("CustomProperties/", [&] {
        out.numbered(properties, [&](const SBlockProperty& property) {
            out.attribute("name", property.metaData->name);
            out.attribute("data type", static_cast<qint32>(property.metaData->dataType));
            // Values for each particle or contact.
            out.attribute("number of elements", property.metaData->numberOfElements);
            out.attribute("units", static_cast<qint32>(property.metaData->unitsType)); // which kind of quantity it is
            property.values->write(writer);
        });
    });
}

// ---------------------------------------------------------------- particles of one type

/// Signed in files, as the ids of particles are everywhere.
static void idsForm(CHdf5FormWriter& f, const std::vector<quint32>& ids)
{
    f.rows("ids", std::vector<qint32>(ids.begin(), ids.end()));
}

static void idsForm(CHdf5FormReader& f, std::vector<quint32>& ids)
{
    std::vector<qint32> stored;
    f.rows("ids", stored);
    ids.assign(stored.begin(), stored.end());
}

template <class TForm, class TData>
static void blockParticlesForm(TForm& f, TData& data)
{
    idsForm(f, data.ids);
    f.rows("velocity", data.velocity);                // m/s
    f.rows("position", data.position);                // m
    f.rows("orientation", data.orientation);          // w, x, y, z
    f.rows("angular velocity", data.angularVelocity); // rad/s
    f.rows("scale", data.scale);                      // factor of all lengths
}

/// \throws hdf5_error  unless every array has a row for each particle
static void checkRows(const CMaterialBlockParticleData& data)
{
    const std::size_t rows = data.ids.size();
    if (data.velocity.size() != rows || data.position.size() != rows || data.orientation.size() != rows ||
        data.angularVelocity.size() != rows || data.scale.size() != rows)
        throw hdf5_error("The arrays of \"" + data.name.toStdString() + "\" in a material block differ in length.");
}

void CHdf5Reader::readMaterialBlockParticleData(CMaterialBlockParticleData& data)
{
    in().attribute("name", data.name);
    in().attribute("spheres", data.sphereCount); // of one particle
    quint32 size = 0;
    in().attribute("size", size); // what is announced; the arrays have the last word
    if (size > 0)
        blockParticlesForm(in(), data);
    checkRows(data);
    reportIfOther("particles of a material block", size, static_cast<quint32>(data.ids.size()));
    readBlockProperties(*this, in(), data.customProperties, static_cast<quint32>(data.ids.size()));
}

void CHdf5Writer::writeMaterialBlockParticleData(const CMaterialBlockParticleData& data)
{
    checkRows(data);
    out().attribute("name", data.name);
    out().attribute("spheres", data.sphereCount);                   // of one particle
    out().attribute("size", static_cast<quint32>(data.ids.size())); // particles
    if (!data.ids.empty())
        blockParticlesForm(out(), data);
    writeBlockProperties(*this, out(), data.customProperties);
}

// ---------------------------------------------------------------- contacts

void CHdf5Reader::readMaterialBlockContactData(CMaterialBlockContactData& data)
{
    quint32 size = 0;
    in().attribute("size", size); // what is announced; the arrays have the last word
    in().rows("contacts", data.contacts, size > 0);
    reportIfOther("contacts of a material block", size, static_cast<quint32>(data.contacts.size()));
    readBlockProperties(*this, in(), data.customProperties, static_cast<quint32>(data.contacts.size()));
}

void CHdf5Writer::writeMaterialBlockContactData(const CMaterialBlockContactData& data)
{
    out().attribute("size", static_cast<quint32>(data.contacts.size())); // contacts
    out().rows("contacts", data.contacts, !data.contacts.empty());
    writeBlockProperties(*this, out(), data.customProperties);
}

// ---------------------------------------------------------------- a block

template <class TForm, class TVisit, class TBlock>
static void blockForm(TForm& f, TVisit&& visit, TBlock& block)
{
    f.attribute("name", block.name);
    f.attribute("material name", block.materialName);
    visit(block.boundingBox);
    f.group("ParticleTypes/", [&] { f.numbered(block.particleData, [&](auto& data) { visit(*data); }); });
    f.group("SurfaceSurface/", [&] { visit(*block.surfaceSurfaceContacts); });
    f.group("SurfaceGeometry/", [&] { visit(*block.surfaceGeometryContacts); });
}

void CHdf5Reader::readMaterialBlock(CMaterialBlock& block)
{
    in().group("ParticleTypes/", [&] {
        block.particleData.resize(in().childCount());
        for (ParticleData& data : block.particleData)
            data = std::make_shared<CMaterialBlockParticleData>();
    });
    blockForm(
        in(), [this](auto& part) { part.read(*this); }, block);
}

void CHdf5Writer::writeMaterialBlock(const CMaterialBlock& block)
{
    blockForm(
        out(), [this](const auto& part) { part.write(*this); }, block);
}

// ---------------------------------------------------------------- all blocks

void CHdf5Reader::readMaterialBlocks(CMaterialBlockMap& blocks)
{
    if (!in().since(30, 0, 16)) // before, there were no blocks
        return;
    in().group("MaterialBlocks/", [&] {
        std::vector<std::shared_ptr<CMaterialBlock>> read(in().childCount());
        in().numbered(read, [&](std::shared_ptr<CMaterialBlock>& block) {
            block = std::make_shared<CMaterialBlock>();
            block->read(*this);
            if (blocks.contains(block->name))
                report(eLost, NLogTitle::hdf5Read,
                       "Two material blocks are named \"" + shortened(block->name) + "\": the later one stays.", 1,
                       shortened(block->name));
            blocks.insert(block->name, block);
        });
    });
}

void CHdf5Writer::writeMaterialBlocks(const CMaterialBlockMap& blocks)
{
    out().group("MaterialBlocks/", [&] {
        out().numbered(blocks, [&](const std::shared_ptr<CMaterialBlock>& block) { block->write(*this); });
    });
}

} // namespace NBrenmark
