// The parameters of contact models and external forces: numbers as attributes of the model's element, tables as its
// children. A model reads each of these elements by the same slot and takes those that it knows.

#include "core/log.h"
#include "core/shortened.h"
#include "physics/parameter_records.h"
#include "xml/serialisers.h"

namespace NBrenmark {

// ---------------------------------------------------------------- tables by pair and by name

static const char* const firstOfPair = "type1";
static const char* const secondOfPair = "type2";

/// \param write  writes the value's attributes
template <class TValue, class TWrite>
static void writePairs(CXmlOutput& out, const char* tag, const CPairTable<TValue>& table, TWrite&& write)
{
    for (const auto& [pair, value] : table.entries)
        out.element(tag, [&out, &write, &names = pair, &held = value] {
            out.attribute(firstOfPair, names.first);
            out.attribute(secondOfPair, names.second);
            write(held);
        });
}

template <class TValue>
static void readPair(const CXmlAttributes& attributes, CPairTable<TValue>& table, const TValue& value)
{
    table.set(attributes.text(firstOfPair).toStdString(), attributes.text(secondOfPair).toStdString(), value);
}

static void writePairs(CXmlOutput& out, const char* tag, const CPairTable<double>& table, const char* valueName)
{
    writePairs(out, tag, table, [&](double value) { out.attribute(valueName, value); });
}

static void writeNames(CXmlOutput& out, const char* tag, const CNameTable& table, const char* key,
                       const char* valueName)
{
    for (const auto& [name, value] : table.entries)
        out.element(tag, [&, &heldName = name, held = value] {
            out.attribute(key, heldName);
            out.attribute(valueName, held);
        });
}

static void readName(const CXmlAttributes& attributes, CNameTable& table, const char* key, const char* valueName)
{
    table.set(attributes.text(key).toStdString(), attributes.number(valueName));
}

// ---------------------------------------------------------------- contact models

static const char* const archardTag = "parameters";

void CXmlReader::readArchardParamData(CArchardContactModelParamData& data)
{
    if (takes(archardTag))
        readName(attributes, data.wearConstants, "geometry", "wear");
}
void CXmlWriter::writeArchardParamData(const CArchardContactModelParamData& data)
{
    writeNames(out(), archardTag, data.wearConstants, "geometry", "wear");
}

static const char* const cohesionTag = "cohesive_interaction";

void CXmlReader::readCohesionParamData(CCohesionContactModelParamData& data)
{
    if (takes(cohesionTag))
        readPair(attributes, data.energyDensity, attributes.number("energy_density")); // J/m^3
}
void CXmlWriter::writeCohesionParamData(const CCohesionContactModelParamData& data)
{
    writePairs(out(), cohesionTag, data.energyDensity, "energy_density");
}

void CXmlReader::readJkrParamData(CJkrContactModelParamData& data)
{
    if (takes(cohesionTag))
        readPair(attributes, data.surfaceEnergy, attributes.number("surface_energy")); // J/m^2
}
void CXmlWriter::writeJkrParamData(const CJkrContactModelParamData& data)
{
    writePairs(out(), cohesionTag, data.surfaceEnergy, "surface_energy");
}

template <class TForm, class TInteraction>
static void hystereticPairForm(TForm& f, TInteraction& interaction)
{
    f.attribute("damping", interaction.damping);
    f.attribute("stiffness", interaction.stiffness);
}

static const char* const yieldTag = "yield_strength";
static const char* const hystereticPairTag = "interaction";

void CXmlReader::readHystereticParamData(CHystereticContactModelParamData& data)
{
    if (takes(yieldTag))
        readName(attributes, data.yields, "name", "yieldvalue"); // Pa
    if (takes(hystereticPairTag)) {
        SHystereticInteraction interaction;
        hystereticPairForm(in(), interaction);
        readPair(attributes, data.interactions, interaction);
    }
}
void CXmlWriter::writeHystereticParamData(const CHystereticContactModelParamData& data)
{
    writeNames(out(), yieldTag, data.yields, "name", "yieldvalue");
    writePairs(out(), hystereticPairTag, data.interactions,
               [this](const SHystereticInteraction& interaction) { hystereticPairForm(out(), interaction); });
}

static const char* const conductivityTag = "heat_conduction";

void CXmlReader::readHeatConductionParamData(CHeatConductionModelParamData& data)
{
    if (takes(conductivityTag))
        readName(attributes, data.conductivities, "particle_type", "thermal_conductivity"); // W/(m K)
}
void CXmlWriter::writeHeatConductionParamData(const CHeatConductionModelParamData& data)
{
    writeNames(out(), conductivityTag, data.conductivities, "particle_type", "thermal_conductivity");
}

static const char* const velocityName = "characteristic_velocity"; // m/s

void CXmlReader::readLinearSpringParamData(CLinearSpringContactModelParamData& data)
{
    if (takes("contact_model"))
        data.characteristicVelocity = attributes.number(velocityName);
}
void CXmlWriter::writeLinearSpringParamData(const CLinearSpringContactModelParamData& data)
{
    out().attribute(velocityName, data.characteristicVelocity);
}

static const char* const alphaName = "alpha"; // 1/s

void CXmlReader::readTribochargingParamData(CTribochargingContactModelParamData& data)
{
    if (takes("contact_model"))
        data.alpha = attributes.number(alphaName);
}
void CXmlWriter::writeTribochargingParamData(const CTribochargingContactModelParamData& data)
{
    out().attribute(alphaName, data.alpha);
}

// ---------------------------------------------------------------- bonds

template <class TForm, class TBond>
static void bondForm(TForm& f, TBond& bond)
{
    f.attribute("normal_stiffness", bond.normalStiffness); // N/m^3
    f.attribute("tang_stiffness", bond.shearStiffness);    // N/m^3
    f.attribute("normal_strength", bond.normalStrength);   // Pa
    f.attribute("shear_strength", bond.shearStrength);     // Pa
    f.attribute("disk_radius", bond.bondRadius);           // m
}

void CXmlReader::readBondParameters(CBondParameters& bond) { bondForm(in(), bond); }
void CXmlWriter::writeBondParameters(const CBondParameters& bond) { bondForm(out(), bond); }

template <class TForm, class TData>
static void parallelBondForm(TForm& f, TData& data)
{
    f.attribute("formation_time", data.formationStartTime);   // s
    f.attribute("end_formation_time", data.formationEndTime); // s
    f.attribute("bonding_state", data.state);                 // EBondFormation
}

static const char* const bondTag = "bonding_parameters";

void CXmlReader::readParallelBondParamData(CParallelBondContactModelParamData& data)
{
    if (takes("contact_model"))
        parallelBondForm(in(), data);
    if (takes(bondTag)) {
        CBondParameters bond;
        bond.read(*this);
        data.bondParameters.set(CBondParametersMap::pairKey(attributes.text(firstOfPair).toStdString(),
                                                            attributes.text(secondOfPair).toStdString()),
                                bond);
    }
}

void CXmlWriter::writeParallelBondParamData(const CParallelBondContactModelParamData& data)
{
    parallelBondForm(out(), data);
    for (const auto& entry : data.bondParameters.entries) {
        const auto names = CBondParametersMap::namesOf(entry.first);
        if (!names) {
            report(eNotCarried, NLogTitle::xmlExport,
                   "The bond parameters of \"" + shortened(entry.first) + "\" are left out: that is no pair of names.");
            continue;
        }
        out().element(bondTag, [&] {
            out().attribute(firstOfPair, names->first);
            out().attribute(secondOfPair, names->second);
            entry.second.write(*this);
        });
    }
}

// ---------------------------------------------------------------- moving planes, each by the index of its geometry

static const char* const planeTag = "plane";
static const char* const displayTag = "display_options";
static const char* const directionTag = "direction_vectors";
static const char* const motionTag = "dynamic_data";
static const char* const planeId = "geom_ID";
static const char* const motionId = "geom_id"; // spelled otherwise than in its neighbours

template <class TForm, class TPlane>
static void directionForm(TForm& f, TPlane& plane)
{
    f.xyz("start_", plane.startPoint); // m
    f.xyz("end_", plane.endPoint);     // m
}

template <class TForm, class TMotion>
static void planeMotionForm(TForm& f, TMotion& motion)
{
    f.attribute("velocity", motion.velocity);         // m/s
    f.attribute("acceleration", motion.acceleration); // m/s^2
    f.attribute("start_time", motion.startTime);      // s
    f.attribute("end_time", motion.endTime);          // s
}

void CXmlReader::readMovingPlaneParamData(CMovingPlaneContactModelParamData& data)
{
    if (takes(planeTag) && attributes.has("geometry"))
        data.planes[attributes.integer("geometry")];
    attributes.know("linear_velocity_"); // which follows from the motions
    attributes.know("selected");
    if (takes(displayTag))
        data.planes[attributes.integer(planeId)].display = attributes.flag("display_vector");
    if (takes(directionTag))
        directionForm(in(), data.planes[attributes.integer(planeId)]);
    if (takes(motionTag)) {
        SMovingPlaneMotion motion;
        planeMotionForm(in(), motion);
        data.planes[attributes.integer(motionId)].motions.push_back(motion);
    }
}

/// The velocity with which a plane sets out: kept for those who know no motions.
static C3DVector initialVelocity(const SMovingPlane& plane)
{
    const double speed = plane.motions.empty() ? 0.0 : plane.motions.front().velocity;
    return speed * (plane.endPoint - plane.startPoint).normalised();
}

void CXmlWriter::writeMovingPlaneParamData(const CMovingPlaneContactModelParamData& data)
{
    for (const auto& entry : data.planes) {
        const SMovingPlane& plane = entry.second;
        out().element(planeTag, [&] {
            out().attribute("geometry", entry.first);
            out().xyz("linear_velocity_", initialVelocity(plane)); // m/s
            out().element(displayTag, [&] {
                out().attribute(planeId, entry.first);
                out().flag("selected", true);
                out().flag("display_vector", plane.display);
            });
            out().element(directionTag, [&] {
                out().attribute(planeId, entry.first);
                directionForm(out(), plane);
            });
            for (const SMovingPlaneMotion& motion : plane.motions)
                out().element(motionTag, [&] {
                    out().attribute(motionId, entry.first);
                    planeMotionForm(out(), motion);
                });
        });
    }
}

// ---------------------------------------------------------------- external forces

static const char* const screeningName = "screening_distance_rmin"; // in radii of the smallest particle

void CXmlReader::readElectrostaticsExtForceParamData(CElectrostaticsExtForceParamData& data)
{
    if (takes("external_force"))
        data.screeningDistance = attributes.number(screeningName);
}
void CXmlWriter::writeElectrostaticsExtForceParamData(const CElectrostaticsExtForceParamData& data)
{
    out().attribute(screeningName, data.screeningDistance);
}

static const char* const temperatureTag = "temperature_update";

void CXmlReader::readHeatConductionExtForceParamData(CHeatConductionExtForceParamData& data)
{
    if (takes(temperatureTag))
        readName(attributes, data.heatCapacities, "particle_type", "heat_capacity"); // J/(kg K)
}
void CXmlWriter::writeHeatConductionExtForceParamData(const CHeatConductionExtForceParamData& data)
{
    writeNames(out(), temperatureTag, data.heatCapacities, "particle_type", "heat_capacity");
}

} // namespace NBrenmark
