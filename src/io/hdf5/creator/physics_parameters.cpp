// The parameter records of contact models and external forces, each in the group of its model: tables by
// name or pair of names, a few numbers, and the option of rolling friction.

#include "io/hdf5/hdf5_reader.h"
#include "io/hdf5/hdf5_writer.h"

#include "core/log.h"
#include "core/shortened.h"
#include "core/stop_flag.h"
#include "io/hdf5/fixed_texts.h"
#include "physics/parameter_records.h"
#include "physics/physics_models.h"

namespace NBrenmark {

using namespace HDF5DATATYPES;

// ---------------------------------------------------------------- rows of tables, one line a field

/// The numbers of a row of TType; move(field, value) goes from one to the other.
template <class TType>
struct SRow;

template <>
struct SRow<SCohesionCmpdType>
{
    template <class TMove, class TRecord, class TValue>
    static void fields(const TMove& move, TRecord& r, TValue& value)
    {
        move(r.value, value);
    }
};

template <>
struct SRow<SHystereticCmpdInterType>
{
    template <class TMove, class TRecord, class TValue>
    static void fields(const TMove& move, TRecord& r, TValue& interaction)
    {
        move(r.damping, interaction.damping);
        move(r.stiffness, interaction.stiffness);
    }
};

template <>
struct SRow<SEcmCmpdType>
{
    template <class TMove, class TRecord, class TValue>
    static void fields(const TMove& move, TRecord& r, TValue& pair)
    {
        move(r.constPullOffForce, pair.constPullOffForce);
        move(r.surfaceEnergy, pair.surfaceEnergy);
        move(r.contactPlasticityRatio, pair.contactPlasticityRatio);
        move(r.slopeExponential, pair.slopeExponential);
        move(r.tensileExponential, pair.tensileExponential);
        move(r.tangentStiffMultiplier, pair.tangentStiffMultiplier);
    }
};

template <>
struct SRow<SLeedsAdhesionCmpdType>
{
    template <class TMove, class TRecord, class TValue>
    static void fields(const TMove& move, TRecord& r, TValue& pair)
    {
        move(r.plasticStiffness, pair.plasticStiffness);
        move(r.elasticStiffness, pair.elasticStiffness);
        move(r.plasticAdhesiveStiffness, pair.plasticAdhesiveStiffness);
        move(r.tangentialStiffness, pair.tangentialStiffness);
        move(r.initialAdhesiveForce, pair.initialAdhesiveForce);
        move(r.initialAdhesivePlasticForce, pair.initialAdhesivePlasticForce);
    }
};

template <>
struct SRow<SBondParamCmpdType>
{
    template <class TMove, class TRecord, class TValue>
    static void fields(const TMove& move, TRecord& r, TValue& bond)
    {
        move(r.normalStiffness, bond.normalStiffness);
        move(r.shearStiffness, bond.shearStiffness);
        move(r.normalStrength, bond.normalStrength);
        move(r.shearStrength, bond.shearStrength);
        move(r.bondRadius, bond.bondRadius);
    }
};

template <>
struct SRow<SMovingPlaneMotionCmpdType>
{
    template <class TMove, class TRecord, class TValue>
    static void fields(const TMove& move, TRecord& r, TValue& motion)
    {
        move(r.velocity, motion.velocity);
        move(r.accel, motion.acceleration);
        move(r.startTime, motion.startTime);
        move(r.endTime, motion.endTime);
    }
};

static const auto toRecord = [](double& field, const double& value) { field = value; };
static const auto fromRecord = [](const double& field, double& value) { value = field; };

/// How many names or keys stood twice: of those the later row stays.
static void tellRepeats(const std::string& name, std::size_t rows, std::size_t entries)
{
    if (rows != entries)
        report(eLost, NLogTitle::hdf5Read,
               std::to_string(rows - entries) + " of " + std::to_string(rows) + " rows of a table \"" + name +
                   "\" repeat a name or pair: the later one stays.",
               rows - entries);
}

// ---------------------------------------------------------------- the three directions
//
// A form is run by the reader, by the writer, and before a deck is touched by a trial that only looks
// whether each name fits its field.

class CNameTrial
{
public:
    static constexpr bool since(quint32, quint32, quint32) { return true; }
    template <class T>
    void attribute(const std::string&, const T&)
    {}
    template <class TType>
    void table(const std::string&, const std::vector<typename TType::SRecord>&)
    {}
};

/// \param TForm  the writer or the trial
template <class TType, class TForm, class TValue>
static void pairsForm(TForm& f, const std::string& name, const CPairTable<TValue>& table)
{
    std::vector<typename TType::SRecord> records;
    for (const auto& [pair, value] : table.entries) {
        typename TType::SRecord record = {};
        setText(record.name1, QString::fromStdString(pair.first));
        setText(record.name2, QString::fromStdString(pair.second));
        SRow<TType>::fields(toRecord, record, value);
        records.push_back(record);
    }
    f.template table<TType>(name, records);
}

template <class TType, class TValue>
static void pairsForm(CHdf5FormReader& f, const std::string& name, CPairTable<TValue>& table)
{
    std::vector<typename TType::SRecord> records;
    f.table<TType>(name, records);
    table.clear();
    for (const typename TType::SRecord& record : records) {
        leaveIfStopped();
        TValue value{};
        SRow<TType>::fields(fromRecord, record, value);
        table.set(textOf(record.name1).toStdString(), textOf(record.name2).toStdString(), value);
    }
    tellRepeats(name, records.size(), table.entries.size());
}

template <class TForm>
static void namesForm(TForm& f, const std::string& name, const CNameTable& table)
{
    std::vector<SBasicCmpdType::SRecord> records;
    for (const auto& [key, value] : table.entries) {
        SBasicCmpdType::SRecord record = {};
        setText(record.name, QString::fromStdString(key));
        record.value = value;
        records.push_back(record);
    }
    f.template table<SBasicCmpdType>(name, records);
}

static void namesForm(CHdf5FormReader& f, const std::string& name, CNameTable& table)
{
    std::vector<SBasicCmpdType::SRecord> records;
    f.table<SBasicCmpdType>(name, records);
    table.clear();
    for (const SBasicCmpdType::SRecord& record : records)
        table.set(textOf(record.name).toStdString(), record.value);
    tellRepeats(name, records.size(), table.entries.size());
}

template <class TForm, class TData>
static void rollingFrictionForm(TForm& f, TData& data)
{
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
    f.attribute("data", data.characteristicVelocity);
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
    pairsForm<SCohesionCmpdType>(f, "data", data.surfaceEnergy);
    rollingFrictionForm(f, data);
}
void CHdf5CreatorDataReader::readJkrParamData(CJkrContactModelParamData& data) { jkrForm(in(), data); }
void CHdf5CreatorDataWriter::writeJkrParamData(const CJkrContactModelParamData& data) { jkrForm(out(), data); }

template <class TForm, class TData>
static void cohesionForm(TForm& f, TData& data)
{
    pairsForm<SCohesionCmpdType>(f, "data", data.energyDensity);
}
void CHdf5CreatorDataReader::readCohesionParamData(CCohesionContactModelParamData& data) { cohesionForm(in(), data); }
void CHdf5CreatorDataWriter::writeCohesionParamData(const CCohesionContactModelParamData& data)
{
    cohesionForm(out(), data);
}

template <class TForm, class TData>
static void hystereticForm(TForm& f, TData& data)
{
    pairsForm<SHystereticCmpdInterType>(f, "interactions", data.interactions);
    namesForm(f, "yields", data.yields);
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
    pairsForm<SEcmCmpdType>(f, "data", data.pairs);
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
    pairsForm<SLeedsAdhesionCmpdType>(f, "data", data.pairs);
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
    namesForm(f, "data", data.conductivities);
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
    namesForm(f, "data", data.wearConstants);
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
    f.attribute("data", data.alpha);
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

static std::vector<SBondParamCmpdType::SRecord> bondRecords(const CBondParametersMap& bonds)
{
    std::vector<SBondParamCmpdType::SRecord> records;
    for (const auto& [key, bond] : bonds.entries) {
        SBondParamCmpdType::SRecord record = {};
        setText(record.key, QString::fromStdString(key));
        SRow<SBondParamCmpdType>::fields(toRecord, record, bond);
        records.push_back(record);
    }
    return records;
}

/// Before 30.0.18 a key joins its names by a sign of its own.
static std::string mendedBondKey(QString key)
{
    key.replace(" - ", " <> ").replace(" + ", " <> ");
    const auto names = CBondParametersMap::namesOf(key.toStdString());
    return names && !CBondParametersMap::namesOf(names->second)
               ? CBondParametersMap::pairKey(names->first, names->second)
               : key.toStdString(); // more than two names: which of them are the pair can't be told
}

void CHdf5CreatorDataReader::readBondParametersMap(CBondParametersMap& bonds)
{
    std::vector<SBondParamCmpdType::SRecord> records;
    in().table<SBondParamCmpdType>("data", records);
    bonds.clear();
    for (const SBondParamCmpdType::SRecord& record : records) {
        leaveIfStopped();
        const QString key = textOf(record.key);
        CBondParameters bond;
        SRow<SBondParamCmpdType>::fields(fromRecord, record, bond);
        bonds.set(in().since(30, 0, 18) ? key.toStdString() : mendedBondKey(key), bond);
    }
    tellRepeats("data", records.size(), bonds.entries.size());
}

void CHdf5CreatorDataWriter::writeBondParametersMap(const CBondParametersMap& bonds)
{
    out().table<SBondParamCmpdType>("data", bondRecords(bonds));
}

template <class TForm, class TData, class TState>
static void parallelBondForm(TForm& f, TData& data, TState& state)
{
    f.attribute("start time", data.formationStartTime);
    f.attribute("end time", data.formationEndTime);
    f.attribute("state", state);
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
    f.attribute("start point", plane.startPoint);
    f.attribute("end point", plane.endPoint);
    f.attribute("display", plane.display);
}

static const char* const motionsName = "motions";

void CHdf5CreatorDataReader::readMovingPlaneParamData(CMovingPlaneContactModelParamData& data)
{
    data.planes.clear();
    const hsize_t count = in().childCount();
    for (hsize_t child = 0; child < count; ++child) {
        const std::string name = in().childName(child);
        bool isNumber = false;
        const qint32 id = QString::fromStdString(name).toInt(&isNumber);
        if (!isNumber) {
            report(eLost, NLogTitle::hdf5Read,
                   "\"" + shortened(name) + "\" among the moving planes is no number: skipped.");
            continue;
        }
        in().group(name, [&] {
            SMovingPlane& plane = data.planes[id];
            planeForm(in(), plane);
            std::vector<SMovingPlaneMotionCmpdType::SRecord> records;
            if (in().has(motionsName))
                in().table<SMovingPlaneMotionCmpdType>(motionsName, records);
            plane.motions.clear();
            for (const SMovingPlaneMotionCmpdType::SRecord& record : records) {
                plane.motions.emplace_back();
                SRow<SMovingPlaneMotionCmpdType>::fields(fromRecord, record, plane.motions.back());
            }
        });
    }
}

void CHdf5CreatorDataWriter::writeMovingPlaneParamData(const CMovingPlaneContactModelParamData& data)
{
    for (const auto& [id, plane] : data.planes) {
        out().group(std::to_string(id), [&, &written = plane] {
            planeForm(out(), written);
            std::vector<SMovingPlaneMotionCmpdType::SRecord> records;
            for (const SMovingPlaneMotion& motion : written.motions) {
                records.emplace_back();
                SRow<SMovingPlaneMotionCmpdType>::fields(toRecord, records.back(), motion);
            }
            if (!records.empty())
                out().table<SMovingPlaneMotionCmpdType>(motionsName, records);
        });
    }
}

// ---------------------------------------------------------------- external forces

template <class TForm, class TData>
static void electrostaticsForm(TForm& f, TData& data)
{
    f.attribute("data", data.screeningDistance);
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
    namesForm(f, "data", data.heatCapacities);
}
void CHdf5CreatorDataReader::readHeatConductionExtForceParamData(CHeatConductionExtForceParamData& data)
{
    temperatureUpdateForm(in(), data);
}
void CHdf5CreatorDataWriter::writeHeatConductionExtForceParamData(const CHeatConductionExtForceParamData& data)
{
    temperatureUpdateForm(out(), data);
}

// ---------------------------------------------------------------- do all names fit?

/// Runs try on the parameters of a model of class TModel; nothing on another one.
template <class TModel, class TItem, class TTry>
static void ifIts(const TItem& item, const TTry& tryNames)
{
    if (const auto* const model = dynamic_cast<const TModel*>(&item))
        tryNames(model->parameters);
}

void checkFixedTexts(const CPhysicsModels& physics)
{
    CNameTrial f;
    for (const CPhysicsModels::Chain* chain : {&physics.sphereSphereModels, &physics.sphereGeometryModels})
        for (const auto& model : *chain) {
            ifIts<CJkrContactModel>(*model, [&](auto& data) { jkrForm(f, data); });
            ifIts<CCohesionContactModel>(*model, [&](auto& data) { cohesionForm(f, data); });
            ifIts<CHystereticContactModel>(*model, [&](auto& data) { hystereticForm(f, data); });
            ifIts<CEdinburghCohesionContactModel>(*model, [&](auto& data) { edinburghForm(f, data); });
            ifIts<CLeedsAdhesionContactModel>(*model, [&](auto& data) { leedsForm(f, data); });
            ifIts<CHeatConductionModel>(*model, [&](auto& data) { heatConductionForm(f, data); });
            ifIts<CArchardContactModel>(*model, [&](auto& data) { archardForm(f, data); });
            ifIts<CParallelBondContactModel>(*model, [&](auto& data) { bondRecords(data.bondParameters); });
        }
    for (const auto& force : physics.externalForces)
        ifIts<CHeatConductionExternalForce>(*force, [&](auto& data) { temperatureUpdateForm(f, data); });
}

} // namespace NBrenmark
