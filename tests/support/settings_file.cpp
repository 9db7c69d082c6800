#include "support/settings_file.h"

namespace NBrenmark {

// Plain numbers, major << 16 | minor << 8 | build.
static constexpr quint32 firstWithEdition = 0x1B0002;       // 27.0.2
static constexpr quint32 firstWithElementValues = 0x170000; // 23.0.0

CBytes propertyPayload(quint32 version, qint32 lastFinalised, const std::vector<SSettingsProperty>& properties)
{
    CBytes b;
    b.i32(lastFinalised).i32(static_cast<qint32>(properties.size()));
    for (const SSettingsProperty& p : properties) {
        b.text(p.name).i32(p.dataType).i32(p.elements).i32(p.units);
        if (version < firstWithElementValues) {
            b.f64(p.initialValues.at(0));
            continue;
        }
        for (const double value : p.initialValues) {
            if (p.dataType == 1)
                b.i32(value != 0.0 ? 1 : 0);
            else
                b.f64(value);
        }
    }
    return b;
}

CBytes settingsHeader(quint32 version, qint32 edition)
{
    CBytes b;
    b.text(QStringLiteral("ESS FILE")).u32(version);
    if (version >= firstWithEdition)
        b.i32(edition);
    return b;
}

CBytes settingsBlock(qint32 identifier, const CBytes& payload)
{
    CBytes b;
    b.ascii("ESS_BLOCK_").i32(static_cast<qint32>(8 + payload.size())).i32(identifier) += payload;
    return b.ascii("ESS_END___");
}

CBytes settingsWith(quint32 version, qint32 lastParticle, const std::vector<SSettingsProperty>& particle,
                    qint32 lastSimulation, const std::vector<SSettingsProperty>& simulation)
{
    const CBytes noProperties = propertyPayload(version, -1, {});
    return settingsHeader(version) + settingsBlock(eSelectionBlock, CBytes().i32(0)) +
           settingsBlock(eFieldBlock, CBytes().i32(0)) +
           settingsBlock(eParticlePropertyBlock, propertyPayload(version, lastParticle, particle)) +
           settingsBlock(eContactPropertyBlock, noProperties) + settingsBlock(eGeometryPropertyBlock, noProperties) +
           settingsBlock(eSimulationPropertyBlock, propertyPayload(version, lastSimulation, simulation));
}

CBytes emptySettings(quint32 version) { return settingsWith(version, -1, {}, -1, {}); }

CBytes configurationFile(const char* fileVersion, const std::vector<std::string>& entries)
{
    CBytes b;
    b.ascii("!format=KEYPATHVALUE\n!format-version=2.4.0.1\n!file-version=").ascii(fileVersion).ascii("\n");
    for (const std::string& entry : entries)
        b.ascii(entry.c_str()).ascii("\n");
    return b;
}

} // namespace NBrenmark
