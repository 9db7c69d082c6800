// Hands blocks to the visitors.
#include "model/material_block.h"

#include "properties/custom_property_data.h"
#include "visitors/file_visitor_reader.h"
#include "visitors/file_visitor_writer.h"

namespace NBrenmark {

void CMaterialBlockParticleData::read(IFileVisitorReader& v) { v.readMaterialBlockParticleData(*this); }

void CMaterialBlockParticleData::write(IFileVisitorWriter& v) const { v.writeMaterialBlockParticleData(*this); }

void CMaterialBlockContactData::read(IFileVisitorReader& v) { v.readMaterialBlockContactData(*this); }

void CMaterialBlockContactData::write(IFileVisitorWriter& v) const { v.writeMaterialBlockContactData(*this); }

CMaterialBlock::CMaterialBlock()
    : surfaceSurfaceContacts(std::make_shared<CMaterialBlockContactData>()),
      surfaceGeometryContacts(std::make_shared<CMaterialBlockContactData>())
{}

void CMaterialBlock::read(IFileVisitorReader& v) { v.readMaterialBlock(*this); }

void CMaterialBlock::write(IFileVisitorWriter& v) const { v.writeMaterialBlock(*this); }

void CMaterialBlockMap::read(IFileVisitorReader& v) { v.readMaterialBlocks(*this); }

void CMaterialBlockMap::write(IFileVisitorWriter& v) const { v.writeMaterialBlocks(*this); }

} // namespace NBrenmark
