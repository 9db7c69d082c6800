// Materials: one table, a row for each.

#include "io/hdf5/hdf5_reader.h"
#include "io/hdf5/hdf5_writer.h"

#include "core/log.h"
#include "core/shortened.h"
#include "core/stop_flag.h"
#include "io/hdf5/fixed_texts.h"
#include "model/materials.h"

#include <memory>

namespace NBrenmark {

using HDF5DATATYPES::SMaterialType;
using SOldMaterialType = HDF5DATATYPES::v300004::SMaterialType;

static qint32 typeOf(const SMaterialType::SRecord& record) { return static_cast<qint32>(record.type); }
static qint32 typeOf(const SOldMaterialType::SRecord&) { return eBulkMaterial; }

template <class TType>
static void readMaterials(CHdf5FormReader& in, MaterialMap& materials)
{
    std::vector<typename TType::SRecord> records;
    in.table<TType>("Materials", records);
    for (const typename TType::SRecord& record : records) {
        leaveIfStopped();
        const QString name = textOf(record.name);
        if (materials.contains(name))
            report(eLost, NLogTitle::hdf5Read,
                   "Two materials are named \"" + shortened(name) + "\": the later one stays.", 1, shortened(name));
        materials.set(name, new CMaterial(name.toStdString(), record.poisson, record.shearMod, record.density,
                                          record.workFunction, typeOf(record)));
    }
}

void CHdf5CreatorDataReader::readMaterialMap(MaterialMap& materials)
{
    if (in().since(30, 0, 4))
        readMaterials<SMaterialType>(in(), materials);
    else
        readMaterials<SOldMaterialType>(in(), materials);
}

std::vector<SMaterialType::SRecord> materialRecords(const MaterialMap& materials)
{
    std::vector<SMaterialType::SRecord> records;
    for (const CMaterial* material : materials) {
        SMaterialType::SRecord record = {};
        setText(record.name, QString::fromStdString(material->name));
        record.poisson = material->poissonsRatio;
        record.shearMod = material->shearModulus;
        record.density = material->density;
        record.workFunction = material->workFunction;
        record.type = static_cast<quint32>(material->type);
        records.push_back(record);
    }
    return records;
}

void CHdf5CreatorDataWriter::writeMaterialMap(const MaterialMap& materials)
{
    out().table<SMaterialType>("Materials", materialRecords(materials));
}

} // namespace NBrenmark
