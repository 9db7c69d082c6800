// The parameter records of contact models and external forces. Those of the Edinburgh and Leeds models, and
// the option of rolling friction, are younger than this family.
#include "core/log.h"
#include "core/stop_flag.h"
#include "io/dem/dem_reader.h"
#include "io/dem/dem_writer.h"
#include "io/dem/repeated_names.h"
#include "physics/parameter_records.h"

namespace NBrenmark {

// ---------------------------------------------------------------- pairs of names

/// Two names in one text, as early decks join them. The text itself and an empty name if it holds no joint.
static SNamePair namesOfJoined(const std::string& text)
{
    std::size_t position = std::string::npos;
    std::size_t width = 0;
    for (const std::string_view joint : {" - ", " + ", " <> "}) {
        const std::size_t found = text.find(joint);
        if (found < position) {
            position = found;
            width = joint.size();
        }
    }
    return position == std::string::npos ? SNamePair(text, std::string())
                                         : SNamePair(text.substr(0, position), text.substr(position + width));
}

static constexpr qint64 leastNameBytes = 4;

static SNamePair readPair(CInForm& f, const SGate& joined)
{
    std::string first;
    std::string second;
    f.text(first);
    if (f.stores(joined))
        return namesOfJoined(first);
    f.text(second);
    return SNamePair(first, second);
}

static void writePair(COutForm& f, const SNamePair& pair)
{
    f.text(pair.first);
    f.text(pair.second);
}

/// \param joined     the versions that hold both names in one text
/// \param valueForm  names the numbers of one value
template <class TValue, class TValueForm>
static void pairsForm(CInForm& f, CPairTable<TValue>& table, const SGate& joined, const TValueForm& valueForm)
{
    table.clear();
    const quint32 count = f.count("name pair", leastNameBytes + sizeof(TValue));
    for (quint32 i = 0; i < count; ++i) {
        leaveIfStopped();
        const SNamePair pair = readPair(f, joined);
        TValue value{};
        valueForm(f, value);
        const TValue* const known = table.find(pair.first, pair.second);
        if (known != nullptr && !(*known == value))
            reportRepeated("pair of names", pair.first + " - " + pair.second);
        table.set(pair.first, pair.second, value);
    }
}

template <class TValue, class TValueForm>
static void pairsForm(COutForm& f, const CPairTable<TValue>& table, const SGate&, const TValueForm& valueForm)
{
    f.length("name pair", leastNameBytes + sizeof(TValue), table.entries);
    for (const auto& [pair, value] : table.entries) {
        writePair(f, pair);
        valueForm(f, value);
    }
}

static constexpr SGate never = below(0, 0, 0); // for pairs that always had two texts
static constexpr SGate gateJoinedNames = from(13, 0, 3).below(20, 0, 0);

static const auto oneNumber = [](auto& f, auto& value) { f.f64(value); };

// ---------------------------------------------------------------- numbers by name

static void namesForm(CInForm& f, CNameTable& table)
{
    table.clear();
    const quint32 count = f.count("named number", leastNameBytes + 8);
    for (quint32 i = 0; i < count; ++i) {
        std::string name;
        double value = 0.0;
        f.text(name);
        f.f64(value);
        const auto known = table.entries.find(name);
        if (known != table.entries.end() && known->second != value)
            reportRepeated("number of", name);
        table.set(name, value);
    }
}

static void namesForm(COutForm& f, const CNameTable& table)
{
    f.length("named number", leastNameBytes + 8, table.entries);
    for (const auto& [name, value] : table.entries) {
        f.text(name);
        f.f64(value);
    }
}

// ---------------------------------------------------------------- contact models

template <class TForm, class TData>
static void linearSpringForm(TForm&& f, TData& data)
{
    f.f64(data.characteristicVelocity); // m/s
}
void CDemCreatorDataReader::readLinearSpringParamData(CLinearSpringContactModelParamData& data)
{
    linearSpringForm(in(), data);
}
void CDemCreatorDataWriter::writeLinearSpringParamData(const CLinearSpringContactModelParamData& data)
{
    linearSpringForm(out(), data);
}

template <class TForm, class TData>
static void jkrForm(TForm&& f, TData& data)
{
    pairsForm(f, data.surfaceEnergy, gateJoinedNames, oneNumber); // J/m^2
}
void CDemCreatorDataReader::readJkrParamData(CJkrContactModelParamData& data) { jkrForm(in(), data); }
void CDemCreatorDataWriter::writeJkrParamData(const CJkrContactModelParamData& data) { jkrForm(out(), data); }

template <class TForm, class TData>
static void cohesionForm(TForm&& f, TData& data)
{
    pairsForm(f, data.energyDensity, gateJoinedNames, oneNumber); // J/m^3
}
void CDemCreatorDataReader::readCohesionParamData(CCohesionContactModelParamData& data) { cohesionForm(in(), data); }
void CDemCreatorDataWriter::writeCohesionParamData(const CCohesionContactModelParamData& data)
{
    cohesionForm(out(), data);
}

template <class TForm, class TData>
static void hystereticForm(TForm&& f, TData& data)
{
    pairsForm(f, data.interactions, never, [](auto& form, auto& interaction) {
        form.f64(interaction.damping);   // factor
        form.f64(interaction.stiffness); // factor from the normal to the tangential stiffness
    });
    namesForm(f, data.yields); // Pa, by particle type or geometry
}
void CDemCreatorDataReader::readHystereticParamData(CHystereticContactModelParamData& data)
{
    hystereticForm(in(), data);
}
void CDemCreatorDataWriter::writeHystereticParamData(const CHystereticContactModelParamData& data)
{
    hystereticForm(out(), data);
}

template <class TForm, class TData>
static void heatConductionForm(TForm&& f, TData& data)
{
    namesForm(f, data.conductivities); // W/(m K), by particle type
}
void CDemCreatorDataReader::readHeatConductionParamData(CHeatConductionModelParamData& data)
{
    heatConductionForm(in(), data);
}
void CDemCreatorDataWriter::writeHeatConductionParamData(const CHeatConductionModelParamData& data)
{
    heatConductionForm(out(), data);
}

template <class TForm, class TData>
static void archardForm(TForm&& f, TData& data)
{
    namesForm(f, data.wearConstants); // 1/Pa, by geometry
}
void CDemCreatorDataReader::readArchardParamData(CArchardContactModelParamData& data) { archardForm(in(), data); }
void CDemCreatorDataWriter::writeArchardParamData(const CArchardContactModelParamData& data)
{
    archardForm(out(), data);
}

template <class TForm, class TData>
static void tribochargingForm(TForm&& f, TData& data)
{
    f.f64(data.alpha); // 1/s; not 0
}
void CDemCreatorDataReader::readTribochargingParamData(CTribochargingContactModelParamData& data)
{
    tribochargingForm(in(), data);
}
void CDemCreatorDataWriter::writeTribochargingParamData(const CTribochargingContactModelParamData& data)
{
    tribochargingForm(out(), data);
}

// ---------------------------------------------------------------- bonds

template <class TForm, class TParameters>
static void bondForm(TForm&& f, TParameters& bond)
{
    f.f64(bond.normalStiffness); // N/m^3
    f.f64(bond.shearStiffness);  // N/m^3
    f.f64(bond.normalStrength);  // Pa
    f.f64(bond.shearStrength);   // Pa
    f.f64(bond.bondRadius);      // m
}
void CDemCreatorDataReader::readBondParameters(CBondParameters& bond) { bondForm(in(), bond); }
void CDemCreatorDataWriter::writeBondParameters(const CBondParameters& bond) { bondForm(out(), bond); }

static constexpr qint64 leastBondBytes = leastNameBytes + 5 * 8; // an empty key and its numbers

void CDemCreatorDataReader::readBondParametersMap(CBondParametersMap& bonds)
{
    CInForm f = in();
    bonds.clear();
    const quint32 count = f.count("bonded pair", leastBondBytes);
    for (quint32 i = 0; i < count; ++i) {
        leaveIfStopped();
        std::string key;
        CBondParameters bond;
        f.text(key);
        bond.read(*this);
        if (!f.since(30, 0, 18)) {
            const SNamePair pair = namesOfJoined(key);
            if (!pair.first.empty()) // else it is no pair, and stays as it is
                key = CBondParametersMap::pairKey(pair.first, pair.second);
        }
        const CBondParameters* const known = bonds.find(key);
        if (known != nullptr && *known != bond)
            reportRepeated("bond of", key);
        bonds.set(key, bond);
    }
}

void CDemCreatorDataWriter::writeBondParametersMap(const CBondParametersMap& bonds)
{
    COutForm f = out();
    f.length("bonded pair", leastBondBytes, bonds.entries);
    for (const auto& [key, bond] : bonds.entries) {
        f.text(key);
        bond.write(*this);
    }
}

template <class TForm, class TData>
static void formationForm(TForm&& f, TData& data)
{
    f.f64(data.formationStartTime); // s
    f.f64(data.formationEndTime);   // s
    f.i32(data.state);              // EBondFormation
}
void CDemCreatorDataReader::readParallelBondParamData(CParallelBondContactModelParamData& data)
{
    data.bondParameters.read(*this);
    formationForm(in(), data);
}
void CDemCreatorDataWriter::writeParallelBondParamData(const CParallelBondContactModelParamData& data)
{
    data.bondParameters.write(*this);
    formationForm(out(), data);
}

// ---------------------------------------------------------------- moving planes

static constexpr qint64 planePointBytes = 4 + 3 * 8;                  // an id and a point
static constexpr qint64 leastPlaneNameBytes = 4 + 2 * leastNameBytes; // an id and two texts
static constexpr qint64 planeBytes = 4 + 2 * 3 * 8;                   // an id and two points
static constexpr SGate gatePlaneNames = from(27, 0, 1);

/// Two tables that nothing here has a use for come before the planes.
static quint32 dropPlaneTables(CInForm& f)
{
    qint32 id = 0;
    C3DPoint point;
    const quint32 points = f.count("plane point", planePointBytes);
    for (quint32 i = 0; i < points; ++i) {
        f.i32(id);
        f.point(point);
    }
    if (!f.stores(gatePlaneNames))
        return points;
    QString name;
    const quint32 names = f.count("plane name", leastPlaneNameBytes);
    for (quint32 i = 0; i < names; ++i) {
        f.i32(id);
        f.text(name);
        f.text(name);
    }
    return points + names;
}

void CDemCreatorDataReader::readMovingPlaneParamData(CMovingPlaneContactModelParamData& data)
{
    CInForm f = in();
    if (const quint32 dropped = dropPlaneTables(f); dropped > 0)
        report(eNotCarried, NLogTitle::legacyRead,
               counted(dropped, "row") +
                   " of moving planes dropped, of which only the start and end points are carried.",
               dropped);
    data.planes.clear();
    const quint32 count = f.count("moving plane", planeBytes);
    for (quint32 i = 0; i < count; ++i) {
        qint32 id = 0;
        f.i32(id);
        SMovingPlane& plane = data.planes[id];
        f.point(plane.startPoint); // m
        f.point(plane.endPoint);   // m
    }
}

void CDemCreatorDataWriter::writeMovingPlaneParamData(const CMovingPlaneContactModelParamData& data)
{
    COutForm f = out();
    f.i32(0);                    // points
    f.i32(0, gatePlaneNames, 0); // names
    f.length("moving plane", planeBytes, data.planes);
    for (const auto& [id, plane] : data.planes) {
        f.i32(id);
        f.point(plane.startPoint); // m
        f.point(plane.endPoint);   // m
    }
}

// ---------------------------------------------------------------- external forces

template <class TForm, class TData>
static void electrostaticsForm(TForm&& f, TData& data)
{
    f.f64(data.screeningDistance); // in radii of the smallest particle
}
void CDemCreatorDataReader::readElectrostaticsExtForceParamData(CElectrostaticsExtForceParamData& data)
{
    electrostaticsForm(in(), data);
}
void CDemCreatorDataWriter::writeElectrostaticsExtForceParamData(const CElectrostaticsExtForceParamData& data)
{
    electrostaticsForm(out(), data);
}

template <class TForm, class TData>
static void temperatureUpdateForm(TForm&& f, TData& data)
{
    namesForm(f, data.heatCapacities); // J/(kg K), by particle type
}
void CDemCreatorDataReader::readHeatConductionExtForceParamData(CHeatConductionExtForceParamData& data)
{
    temperatureUpdateForm(in(), data);
}
void CDemCreatorDataWriter::writeHeatConductionExtForceParamData(const CHeatConductionExtForceParamData& data)
{
    temperatureUpdateForm(out(), data);
}

} // namespace NBrenmark
