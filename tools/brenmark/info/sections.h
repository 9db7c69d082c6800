#pragma once
// The sections of brenmark info: each is described in a part of one object, and printed from that object, so that text
// and JSON say the same. A file each beside this one.

#include "brenmark/json_text.h"

#include <functional>
#include <vector>

namespace NBrenmark {

class CCustomPropertyMetaData;
class CDeckReader;
class CFailure;
class CPhysicsModels;
class CPluginParticleFactoryList;
class GeometryGroups;
struct SSimulationFrame;

/// Times and, if counted, what each timestep holds, for which all are read; else only the last one is. The last
/// one that can be read is loaded at the end.
/// \param failures   gets those of the timesteps that can't be read, which have "damaged" and no time
/// \param isAnyRead  whether a model is loaded now, if only that of a deck without timesteps
Json timestepList(CDeckReader& reader, const QString& path, bool counted, std::vector<CFailure>& failures,
                  bool& isAnyRead);
void printTimesteps(const Json& deck);

Json typeList(const SSimulationFrame& frame);
Json materialList(const SSimulationFrame& frame);
void printParticlesAndMaterials(const Json& deck);

Json geometryList(const GeometryGroups& groups);
Json factoryList(const GeometryGroups& groups);
void printGeometry(const Json& deck);

/// Both chains of contact models and the external forces, in order, with what can be said of their parameters in a
/// line. Of a plug-in's they say where its library is; nothing is loaded.
Json physicsObject(const CPhysicsModels& physics);
/// Name and library of each factory of a plug-in.
Json pluginFactoryList(const CPluginParticleFactoryList& factories);
void printPhysics(const Json& deck);

/// Calls take with owner, definition and whether timesteps store it, for all definitions, owner by owner.
void eachProperty(CDeckReader& reader,
                  const std::function<void(const char*, const CCustomPropertyMetaData&, bool)>& take);
Json propertyList(CDeckReader& reader);
void printProperties(const Json& deck);

/// What the settings file holds, and the old property file that takes the place of a part of it.
Json settingsOf(CDeckReader& reader);
void printSettings(const Json& deck);

} // namespace NBrenmark
