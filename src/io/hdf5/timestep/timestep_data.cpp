// A timestep: the one child of "/TimestepData/", named by its time.

#include "io/hdf5/hdf5_reader.h"
#include "io/hdf5/hdf5_writer.h"

#include "core/log.h"
#include "io/hdf5/plugin_factories.h"
#include "model/creator_data.h"
#include "results/timestep_data.h"

#include <QDateTime>

namespace NBrenmark {

using HDF5DATATYPES::SNameCountType;

template <class TForm, class TData>
static void contentForm(TForm& f, TData& data)
{
    f.attribute("full timestep", data.isFull);       // else the masks say what was left out
    f.attribute("timestep mask", data.timestepMask); // ETimestepMask
    f.attribute("particle mask", data.particleMask); // EParticleMask
    f.attribute("geometry mask", data.geometryMask); // EGeometryMask
}

template <class TForm, class TData, class TTime>
static void momentForm(TForm& f, TData& data, TTime& time)
{
    f.attribute("time", time);                          // s, simulated
    f.attribute("elapsed real time", data.elapsedTime); // s, real
    f.attribute("run number", data.runNumber);
    f.attribute("date", data.date); // dd/MM/yy, of the writing
}

static const char* const removedName = "removed particles";

static void readRemovedParticles(CHdf5FormReader& in, CTimestepData& data)
{
    for (const SNameCountType::Row& row : in.table<SNameCountType>(removedName))
        data.removedParticles.insert(row.name, row.count);
}

static void writeRemovedParticles(CHdf5FormWriter& out, const CTimestepData& data)
{
    std::vector<SNameCountType::Row> rows;
    for (auto entry = data.removedParticles.begin(); entry != data.removedParticles.end(); ++entry)
        rows.push_back({entry.key(), entry.value()});
    out.table<SNameCountType>(removedName, rows);
}

void CHdf5TimestepDataReader::readTimestepData(CTimestepData& data)
{
    H5::Group root = file.openGroup("/");
    const CHdf5Place place(*this, root);
    in().group("TimestepData/", [&] {
        const std::vector<std::string> names = in().childNames();
        if (names.empty())
            throwAt(*location, "group", "", "holds no timestep");
        in().group(names.front(), [&] {
            readFileVersionInfo(data);
            contentForm(in(), data);
            if (options.extent == eReadParticles) {
                data.particleTypes.read(*this);
                momentForm(in(), data, data.time);
                return;
            }
            data.creatorData.geometryGroups.read(*this);
            data.particleTypes.read(*this);
            data.contacts.read(*this);
            data.collisions.read(*this);
            data.bonds.read(*this);
            if (!in().since(30, 0, 5)) // from there on they belong to the model
                readPluginFactories(in(), data.creatorData.pluginFactories);
            momentForm(in(), data, data.time);
            data.systemEnergy.read(*this);
            in().examined("", [&] { readRemovedParticles(in(), data); });
            data.simulationProperties.read(*this);
        });
    });
    if (options.extent == eReadParticles)
        data.settleParticles();
    else
        data.settle(NLogTitle::hdf5Read);
}

void CHdf5TimestepDataWriter::writeTimestepData(CTimestepData& data)
{
    const double time = options.overrideTime ? options.timeOverride : data.time; // s, simulated
    data.isFull = options.fullSave;
    data.timestepMask = options.timestepMask;
    data.particleMask = options.particleMask;
    data.geometryMask = options.geometryMask;
    out().root([&] {
        out().sameGroup("TimestepData/", [&] {
            out().group(QString::number(time, 'g', 6).toStdString(), [&] {
                writeFileVersionInfo(data);
                // Of the model that the timestep belongs to.
                out().attribute("creatordata index", data.creatorData.storageIndex());
                contentForm(out(), data);
                data.creatorData.geometryGroups.write(*this);
                data.particleTypes.write(*this);
                data.contacts.write(*this);
                data.collisions.write(*this);
                data.bonds.write(*this);
                data.date = QDateTime::currentDateTime().toString("dd/MM/yy");
                momentForm(out(), data, time);
                // An override serves one write.
                options.overrideTime = false;
                options.timeOverride = 0.0;
                data.systemEnergy.write(*this);
                writeRemovedParticles(out(), data);
                if (options.writeCustomProperties)
                    data.simulationProperties.write(*this);
                else
                    out().group("CustomProperties/", [] {});
            });
        });
    });
}

} // namespace NBrenmark
