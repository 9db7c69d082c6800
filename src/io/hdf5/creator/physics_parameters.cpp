// The parameter records of contact models and external forces, each in the group of its model: tables by
// name or pair of names, a few numbers, and the option of rolling friction.

#include "io/hdf5/hdf5_reader.h"
#include "io/hdf5/hdf5_writer.h"

#include "core/log.h"
#include "core/shortened.h"
#include "core/stop_flag.h"
#include "physics/parameter_records.h"
#include "physics/physics_models.h"

namespace NBrenmark {

using namespace HDF5DATATYPES;

/// How many names or keys stood twice: of those the later row stays.
static void reportRepeats(const std::string& name, std::size_t rows, std::size_t entries)
{
    if (rows != entries)
        report(eLost, NLogTitle::hdf5Read,
               std::to_string(rows - entries) + " of " + std::to_string(rows) + " rows of a table \"" + name +
                   "\" repeat a name or pair: the later one stays.",
               rows - entries);
}

// ---------------------------------------------------------------- tables by name or by pair

template <class TRecord, class TValue>
static void pairsForm(CHdf5FormWriter& f, const std::string& name, const CPairTable<TValue>& table)
{
    std::vector<typename TRecord::Row> rows;
    for (const auto& [pair, value] : table.entries)
        rows.push_back({value, pair.first, pair.second});
    f.table<TRecord>(name, rows);
}

template <class TRecord, class TValue>
static void pairsForm(CHdf5FormReader& f, const std::string& name, CPairTable<TValue>& table)
{
    const auto rows = f.table<TRecord>(name);
    table.clear();
    for (const typename TRecord::Row& row : rows) {
        leaveIfStopped();
        table.set(row.name1, row.name2, row);
    }
    reportRepeats(name, rows.size(), table.entries.size());
}

static void namesForm(CHdf5FormWriter& f, const std::string& name, const CNameTable& table)
{
    std::vector<SBasicCmpdType::Row> rows;
    for (const auto& [key, value] : table.entries)
        rows.push_back({key, value});
    f.table<SBasicCmpdType>(name, rows);
}

static void namesForm(CHdf5FormReader& f, const std::string& name, CNameTable& table)
{
    const auto rows = f.table<SBasicCmpdType>(name);
    table.clear();
    for (const SBasicCmpdType::Row& row : rows)
        table.set(row.name, row.value);
    reportRepeats(name, rows.size(), table.entries.size());
}

template <class TForm, class TData>
static void rollingFrictionForm(TForm& f, TData& data)
{
    // Before 30.0.20 there was no choice: yes between spheres, no at geometry.
    if (data.hasRollingFrictionOption() && f.since(30, 0, 20))
        f.attribute("enable rolling friction", data.enableRollingFriction);
}

// ---------------------------------------------------------------- contact models

void CHdf5CreatorDataReader::readHertzMindlinNoSlipParamData(CHertzMindlinNoSlipContactModelParamData& data)
{
    rollingFrictionForm(in(), data);
}
void CHdf5CreatorDataWriter::writeHertzMindlinNoSlipParamData(const CHertzMindlinNoSlipContactModelParamData& data)
{
    rollingFrictionForm(out(), data);
}

template <class TForm, class TData>
static void linearSpringForm(TForm& f, TData& data)
{
    f.attribute("data", data.characteristicVelocity); // m/s
    rollingFrictionForm(f, data);
}
void CHdf5CreatorDataReader::readLinearSpringParamData(CLinearSpringContactModelParamData& data)
{
    linearSpringForm(in(), data);
}
void CHdf5CreatorDataWriter::writeLinearSpringParamData(const CLinearSpringContactModelParamData& data)
{
    linearSpringForm(out(), data);
}

template <class TForm, class TData>
static void jkrForm(TForm& f, TData& data)
{
    pairsForm<SCohesionCmpdType>(f, "data", data.surfaceEnergy); // J/m^2
    rollingFrictionForm(f, data);
}
void CHdf5CreatorDataReader::readJkrParamData(CJkrContactModelParamData& data) { jkrForm(in(), data); }
void CHdf5CreatorDataWriter::writeJkrParamData(const CJkrContactModelParamData& data) { jkrForm(out(), data); }

template <class TForm, class TData>
static void cohesionForm(TForm& f, TData& data)
{
    pairsForm<SCohesionCmpdType>(f, "data", data.energyDensity); // J/m^3
}
void CHdf5CreatorDataReader::readCohesionParamData(CCohesionContactModelParamData& data) { cohesionForm(in(), data); }
void CHdf5CreatorDataWriter::writeCohesionParamData(const CCohesionContactModelParamData& data)
{
    cohesionForm(out(), data);
}

template <class TForm, class TData>
static void hystereticForm(TForm& f, TData& data)
{
    pairsForm<SHystereticCmpdInterType>(f, "interactions", data.interactions); // two factors a pair
    namesForm(f, "yields", data.yields);                                       // Pa, by particle type or geometry
    rollingFrictionForm(f, data);
}
void CHdf5CreatorDataReader::readHystereticParamData(CHystereticContactModelParamData& data)
{
    hystereticForm(in(), data);
}
void CHdf5CreatorDataWriter::writeHystereticParamData(const CHystereticContactModelParamData& data)
{
    hystereticForm(out(), data);
}

template <class TForm, class TData>
static void edinburghForm(TForm& f, TData& data)
{
    pairsForm<SEcmCmpdType>(f, "data", data.pairs); // units as in the compound
    rollingFrictionForm(f, data);
}
void CHdf5CreatorDataReader::readEdinburghCohesionParamData(CEdinburghCohesionContactModelParamData& data)
{
    edinburghForm(in(), data);
}
void CHdf5CreatorDataWriter::writeEdinburghCohesionParamData(const CEdinburghCohesionContactModelParamData& data)
{
    edinburghForm(out(), data);
}

template <class TForm, class TData>
static void leedsForm(TForm& f, TData& data)
{
    pairsForm<SLeedsAdhesionCmpdType>(f, "data", data.pairs); // N/m and N
    rollingFrictionForm(f, data);
}
void CHdf5CreatorDataReader::readLeedsAdhesionParamData(CLeedsAdhesionContactModelParamData& data)
{
    leedsForm(in(), data);
}
void CHdf5CreatorDataWriter::writeLeedsAdhesionParamData(const CLeedsAdhesionContactModelParamData& data)
{
    leedsForm(out(), data);
}

template <class TForm, class TData>
static void heatConductionForm(TForm& f, TData& data)
{
    namesForm(f, "data", data.conductivities); // W/(m K), by particle type
}
void CHdf5CreatorDataReader::readHeatConductionParamData(CHeatConductionModelParamData& data)
{
    heatConductionForm(in(), data);
}
void CHdf5CreatorDataWriter::writeHeatConductionParamData(const CHeatConductionModelParamData& data)
{
    heatConductionForm(out(), data);
}

template <class TForm, class TData>
static void archardForm(TForm& f, TData& data)
{
    namesForm(f, "data", data.wearConstants); // 1/Pa, by geometry
    rollingFrictionForm(f, data);
}
void CHdf5CreatorDataReader::readArchardParamData(CArchardContactModelParamData& data) { archardForm(in(), data); }
void CHdf5CreatorDataWriter::writeArchardParamData(const CArchardContactModelParamData& data)
{
    archardForm(out(), data);
}

template <class TForm, class TData>
static void tribochargingForm(TForm& f, TData& data)
{
    f.attribute("data", data.alpha); // 1/s; not 0
}
void CHdf5CreatorDataReader::readTribochargingParamData(CTribochargingContactModelParamData& data)
{
    tribochargingForm(in(), data);
}
void CHdf5CreatorDataWriter::writeTribochargingParamData(const CTribochargingContactModelParamData& data)
{
    tribochargingForm(out(), data);
}

// ---------------------------------------------------------------- bonds

/// Before 30.0.18 a key joins its names by a sign of its own.
static std::string repairedBondKey(QString key)
{
    key.replace(" - ", " <> ").replace(" + ", " <> ");
    const auto names = CBondParametersMap::namesOf(key.toStdString());
    return names && !CBondParametersMap::namesOf(names->second)
               ? CBondParametersMap::pairKey(names->first, names->second)
               : key.toStdString(); // more than two names: which of them are the pair can't be known
}

void CHdf5CreatorDataReader::readBondParametersMap(CBondParametersMap& bonds)
{
    const auto rows = in().table<SBondParamCmpdType>("data");
    bonds.clear();
    for (const SBondParamCmpdType::Row& row : rows) {
        leaveIfStopped();
        bonds.set(in().since(30, 0, 18) ? row.key.toStdString() : repairedBondKey(row.key), row);
    }
    reportRepeats("data", rows.size(), bonds.entries.size());
}

void CHdf5CreatorDataWriter::writeBondParametersMap(const CBondParametersMap& bonds)
{
    std::vector<SBondParamCmpdType::Row> rows;
    for (const auto& [key, bond] : bonds.entries)
        rows.push_back({bond, QString::fromStdString(key)});
    out().table<SBondParamCmpdType>("data", rows);
}

template <class TForm, class TData, class TState>
static void parallelBondForm(TForm& f, TData& data, TState& state)
{
    f.attribute("start time", data.formationStartTime); // s
    f.attribute("end time", data.formationEndTime);     // s
    f.attribute("state", state);                        // EBondFormation
    if (f.since(30, 0, 7))
        f.attribute("torque feedback", data.torqueFeedback);
    rollingFrictionForm(f, data);
}

void CHdf5CreatorDataReader::readParallelBondParamData(CParallelBondContactModelParamData& data)
{
    qint32 state = 0;
    data.torqueFeedback = false; // before the option came up
    parallelBondForm(in(), data, state);
    data.state = static_cast<quint32>(state);
    data.bondParameters.read(*this);
}

void CHdf5CreatorDataWriter::writeParallelBondParamData(const CParallelBondContactModelParamData& data)
{
    const qint32 state = static_cast<qint32>(data.state);
    parallelBondForm(out(), data, state);
    data.bondParameters.write(*this);
}

// ---------------------------------------------------------------- moving planes: a group for each, named by its id

template <class TForm, class TPlane>
static void planeForm(TForm& f, TPlane& plane)
{
    f.attribute("start point", plane.startPoint); // m
    f.attribute("end point", plane.endPoint);     // m
    f.attribute("display", plane.display);        // its arrow is shown
}

static const char* const motionsName = "motions";

void CHdf5CreatorDataReader::readMovingPlaneParamData(CMovingPlaneContactModelParamData& data)
{
    data.planes.clear();
    for (const std::string& name : in().childNames()) {
        bool isNumber = false;
        const qint32 id = QString::fromStdString(name).toInt(&isNumber);
        if (!isNumber) {
            report(eLost, NLogTitle::hdf5Read,
                   "\"" + shortened(name) + "\" among the moving planes isn't a number: skipped.");
            continue;
        }
        in().group(name, [&] {
            SMovingPlane& plane = data.planes[id];
            planeForm(in(), plane);
            plane.motions.clear();
            if (in().has(motionsName))
                plane.motions = in().table<SMovingPlaneMotionCmpdType>(motionsName);
        });
    }
}

void CHdf5CreatorDataWriter::writeMovingPlaneParamData(const CMovingPlaneContactModelParamData& data)
{
    for (const auto& [id, plane] : data.planes) {
        out().group(std::to_string(id), [&, &written = plane] {
            planeForm(out(), written);
            if (!written.motions.empty())
                out().table<SMovingPlaneMotionCmpdType>(motionsName, written.motions);
        });
    }
}

// ---------------------------------------------------------------- external forces

template <class TForm, class TData>
static void electrostaticsForm(TForm& f, TData& data)
{
    f.attribute("data", data.screeningDistance); // in radii of the smallest particle
}
void CHdf5CreatorDataReader::readElectrostaticsExtForceParamData(CElectrostaticsExtForceParamData& data)
{
    electrostaticsForm(in(), data);
}
void CHdf5CreatorDataWriter::writeElectrostaticsExtForceParamData(const CElectrostaticsExtForceParamData& data)
{
    electrostaticsForm(out(), data);
}

template <class TForm, class TData>
static void temperatureUpdateForm(TForm& f, TData& data)
{
    namesForm(f, "data", data.heatCapacities); // J/(kg K), by particle type
}
void CHdf5CreatorDataReader::readHeatConductionExtForceParamData(CHeatConductionExtForceParamData& data)
{
    temperatureUpdateForm(in(), data);
}
void CHdf5CreatorDataWriter::writeHeatConductionExtForceParamData(const CHeatConductionExtForceParamData& data)
{
    temperatureUpdateForm(out(), data);
}

} // namespace NBrenmark
