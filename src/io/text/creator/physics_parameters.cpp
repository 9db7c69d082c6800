// The text of the parameters of contact models and external forces.
#include "io/text/text_writer.h"
#include "physics/parameter_records.h"

namespace NBrenmark {

// ---------------------------------------------------------------- tables

/// Each pair as PATH/NAME/NAME, for body to write its value.
template <class TValue, class TBody>
static void pairs(CTextOutput& out, const char* name, const CPairTable<TValue>& table, const TBody& body)
{
    out.group(name, [&] {
        for (const auto& entry : table.entries)
            out.group(NText::segment(entry.first.first),
                      [&] { out.group(NText::segment(entry.first.second), [&] { body(entry.second); }); });
    });
}

static void pairs(CTextOutput& out, const char* name, const CPairTable<double>& table)
{
    pairs(out, name, table, [&](double value) { out.here(value); });
}

static void names(CTextOutput& out, const char* name, const CNameTable& table)
{
    out.group(name, [&] {
        for (const auto& entry : table.entries)
            out.group(NText::segment(entry.first), [&] { out.here(entry.second); });
    });
}

// ---------------------------------------------------------------- contact models

void CTextWriter::writeHertzMindlinNoSlipParamData(const CHertzMindlinNoSlipContactModelParamData& data)
{
    out.value("enableRollingFriction", data.enableRollingFriction);
}

void CTextWriter::writeLinearSpringParamData(const CLinearSpringContactModelParamData& data)
{
    out.value("characteristicVelocity", data.characteristicVelocity); // m/s
    out.value("enableRollingFriction", data.enableRollingFriction);
}

void CTextWriter::writeJkrParamData(const CJkrContactModelParamData& data)
{
    pairs(out, "surfaceEnergy", data.surfaceEnergy); // J/m^2
    out.value("enableRollingFriction", data.enableRollingFriction);
}

void CTextWriter::writeCohesionParamData(const CCohesionContactModelParamData& data)
{
    pairs(out, "energyDensity", data.energyDensity); // J/m^3
}

void CTextWriter::writeHystereticParamData(const CHystereticContactModelParamData& data)
{
    pairs(out, "interactions", data.interactions, [&](const SHystereticInteraction& interaction) {
        out.value("damping", interaction.damping);
        out.value("stiffness", interaction.stiffness);
    });
    names(out, "yields", data.yields); // Pa
    out.value("enableRollingFriction", data.enableRollingFriction);
}

void CTextWriter::writeEdinburghCohesionParamData(const CEdinburghCohesionContactModelParamData& data)
{
    pairs(out, "pairs", data.pairs, [&](const SEdinburghPair& pair) {
        out.value("constPullOffForce", pair.constPullOffForce); // N
        out.value("surfaceEnergy", pair.surfaceEnergy);         // J/m^2
        out.value("contactPlasticityRatio", pair.contactPlasticityRatio);
        out.value("slopeExponential", pair.slopeExponential);
        out.value("tensileExponential", pair.tensileExponential);
        out.value("tangentStiffMultiplier", pair.tangentStiffMultiplier);
    });
    out.value("enableRollingFriction", data.enableRollingFriction);
}

void CTextWriter::writeLeedsAdhesionParamData(const CLeedsAdhesionContactModelParamData& data)
{
    pairs(out, "pairs", data.pairs, [&](const SLeedsPair& pair) {
        out.value("plasticStiffness", pair.plasticStiffness);                       // N/m
        out.value("elasticStiffness", pair.elasticStiffness);                       // N/m
        out.value("plasticAdhesiveStiffness", pair.plasticAdhesiveStiffness);       // N/m
        out.value("tangentialStiffness", pair.tangentialStiffness);                 // N/m
        out.value("initialAdhesiveForce", pair.initialAdhesiveForce);               // N
        out.value("initialAdhesivePlasticForce", pair.initialAdhesivePlasticForce); // N
    });
    out.value("enableRollingFriction", data.enableRollingFriction);
}

void CTextWriter::writeHeatConductionParamData(const CHeatConductionModelParamData& data)
{
    names(out, "conductivities", data.conductivities); // W/(m K)
}

void CTextWriter::writeArchardParamData(const CArchardContactModelParamData& data)
{
    names(out, "wearConstants", data.wearConstants); // 1/Pa
    out.value("enableRollingFriction", data.enableRollingFriction);
}

void CTextWriter::writeTribochargingParamData(const CTribochargingContactModelParamData& data)
{
    out.value("alpha", data.alpha); // 1/s
}

void CTextWriter::writeBondParameters(const CBondParameters& bond)
{
    out.value("normalStiffness", bond.normalStiffness); // N/m^3
    out.value("shearStiffness", bond.shearStiffness);   // N/m^3
    out.value("normalStrength", bond.normalStrength);   // Pa
    out.value("shearStrength", bond.shearStrength);     // Pa
    out.value("bondRadius", bond.bondRadius);           // m
}

void CTextWriter::writeBondParametersMap(const CBondParametersMap& bonds)
{
    for (const auto& entry : bonds.entries)
        out.group(NText::segment(entry.first), [&] { entry.second.write(*this); });
}

void CTextWriter::writeParallelBondParamData(const CParallelBondContactModelParamData& data)
{
    out.value("formationStartTime", data.formationStartTime); // s
    out.value("formationEndTime", data.formationEndTime);     // s
    out.value("state", data.state);                           // EBondFormation
    out.value("torqueFeedback", data.torqueFeedback);
    out.value("enableRollingFriction", data.enableRollingFriction);
    out.group("bondParameters", [&] { data.bondParameters.write(*this); });
}

void CTextWriter::writeMovingPlaneParamData(const CMovingPlaneContactModelParamData& data)
{
    out.group("planes", [&] {
        for (const auto& entry : data.planes)
            out.group(std::to_string(entry.first), [&] {
                const SMovingPlane& plane = entry.second;
                out.value("startPoint", plane.startPoint);
                out.value("endPoint", plane.endPoint);
                out.value("display", plane.display);
                std::vector<std::array<double, 4>> rows; // m/s, m/s^2, s, s
                for (const SMovingPlaneMotion& motion : plane.motions)
                    rows.push_back({motion.velocity, motion.acceleration, motion.startTime, motion.endTime});
                out.array("motions", rows);
            });
    });
}

// ---------------------------------------------------------------- external forces

void CTextWriter::writeElectrostaticsExtForceParamData(const CElectrostaticsExtForceParamData& data)
{
    out.value("screeningDistance", data.screeningDistance); // in radii of the smallest particle
}

void CTextWriter::writeHeatConductionExtForceParamData(const CHeatConductionExtForceParamData& data)
{
    names(out, "heatCapacities", data.heatCapacities); // J/(kg K)
}

} // namespace NBrenmark
