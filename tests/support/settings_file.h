#pragma once
// Settings (.ess) and configuration (.dfg) files, built byte by byte.

#include "support/bytes.h"

#include <vector>

namespace NBrenmark {

/// Identifiers of the blocks of a settings file.
enum ESettingsBlock : qint32
{
    eSelectionBlock = 1,
    eFieldBlock = 2,
    eContactPropertyBlock = 3,
    eParticlePropertyBlock = 4,
    eGeometryPropertyBlock = 5,
    eSimulationPropertyBlock = 6
};

/// The definition of one custom property.
struct SSettingsProperty
{
    QString name;
    qint32 dataType = 0; ///< 0 double, 1 boolean
    qint32 elements = 1;
    qint32 units = 0;
    std::vector<double> initialValues; ///< one for each element; a boolean property's are 0 and 1
};

/// Payload of a custom property block. Below 23.0.0 the first initial value stands for all elements.
CBytes propertyPayload(quint32 version, qint32 lastFinalised, const std::vector<SSettingsProperty>& properties);

/// Marker, version, and from 27.0.2 on the edition.
CBytes settingsHeader(quint32 version, qint32 edition = 0);
/// A whole block with its markers.
CBytes settingsBlock(qint32 identifier, const CBytes& payload);

/// A settings file with nothing in any of its six entries.
CBytes emptySettings(quint32 version);

/// A settings file with definitions for particles and for the simulation, the rest empty.
CBytes settingsWith(quint32 version, qint32 lastParticle, const std::vector<SSettingsProperty>& particle,
                    qint32 lastSimulation, const std::vector<SSettingsProperty>& simulation);

/// A configuration file: the three head lines, then the entries, a line each.
/// \param entries  "KEY:PATH=KIND:value"
CBytes configurationFile(const char* fileVersion, const std::vector<std::string>& entries);

} // namespace NBrenmark
