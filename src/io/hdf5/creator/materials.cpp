// Materials: one table, a row for each.

#include "io/hdf5/hdf5_reader.h"
#include "io/hdf5/hdf5_writer.h"

#include "core/log.h"
#include "core/shortened.h"
#include "core/stop_flag.h"
#include "materials/materials.h"

#include <memory>

namespace NBrenmark {

using HDF5DATATYPES::SMaterialType;

static const char* const materialsName = "Materials";

void CHdf5CreatorDataReader::readMaterialMap(MaterialMap& materials)
{
    for (const CMaterial& material : in().table<SMaterialType>(materialsName)) {
        leaveIfStopped();
        const QString name = QString::fromStdString(material.name);
        if (materials.contains(name))
            report(eLost, NLogTitle::hdf5Read,
                   "Two materials are named \"" + shortened(name) + "\": the later one stays.", 1, shortened(name));
        materials.set(name, new CMaterial(material));
    }
}

void CHdf5CreatorDataWriter::writeMaterialMap(const MaterialMap& materials)
{
    std::vector<CMaterial> rows;
    for (const CMaterial* const material : materials)
        rows.push_back(*material);
    out().table<SMaterialType>(materialsName, rows);
}

} // namespace NBrenmark
