// The tables of keys: name, kind and default. What a key is for is known to the applications alone.
#include "config/role_keys.h"

#include "core/save_options.h"
#include "core/version_history.h"

#include <set>
#include <string>

namespace NBrenmark {

using NConfig::placedAt;
using NConfig::SKeyDefault;
using NConfig::SKeySet;

static const QString noText;
static const C3DPoint origin(0.0, 0.0, 0.0);

// ---------------------------------------------------------------- creator

SKeySet viewKeys()
{
    return {"VIEWS",
            {{"CURRENT VIEW", noText}},
            {},
            {{"",
              {{"Name", noText},
               {"PROJECTION", 0},
               {"FOV", 30.0}, // degrees
               {"SPECULAR HIGHLIGHT", false},
               {"TRACK GEOM", 0},
               {"CAMERA:POSITION", C3DPoint(0.0, 0.0, 1.0)},
               {"CAMERA:TARGET", origin},
               {"CAMERA:UP VECTOR", C3DPoint(0.0, 1.0, 0.0)}},
              {},
              {}}}};
}

SKeySet creatorKeys()
{
    return {"",
            {{"AUTOUPDATE DOMAIN", true},
             {"DISPLAY:PARTICLES", true},
             {"DISPLAY:GEOMETRY MODE IN GEOMETRY TAB", 0},
             {"DISPLAY:GEOMETRY MODE IN GLOBALS TAB", 0},
             {"DISPLAY:GEOMETRY MODE IN FACTORIES TAB", 0},
             {"DISPLAY:GEOMETRY OPACITY IN GEOMETRY TAB", 1.0},
             {"DISPLAY:GEOMETRY OPACITY IN GLOBALS TAB", 1.0},
             {"DISPLAY:GEOMETRY OPACITY IN FACTORIES TAB", 1.0},
             {"IDS OF AUTO COM GEOMETRIES", std::set<unsigned int>()}},
            {},
            {}};
}

// ---------------------------------------------------------------- processor

SKeySet processorKeys(quint32 fileVersion)
{
    return {"",
            {{"GENERAL:AUTO TIMESTEP", fileVersion >= NFileVersion::hdf5},
             {"GENERAL:FIXED TIMESTEP", 1e-6}, // s
             {"GENERAL:DYNAMIC DOMAIN", false},
             {"GENERAL:TAU", 0.1},
             {"GENERAL:PSI", 3},
             {"GENERAL:RADIUS_COEFFICIENT", 10.0},
             {"GENERAL:TIME INTEGRATION", 0},
             {"GENERAL:NUM THREADS", 99},
             {"GENERAL:TRACK COLLISIONS", false},
             {"GENERAL:GRID CELL SIZE", 1.0},
             {"GENERAL:IGNORE CHAIN WARNINGS", false},
             {"GENERAL:AUTO GRIDCELL", false},
             {"WRITE:TOTAL", 1.0},     // s
             {"WRITE:INTERVAL", 0.01}, // s
             {"WRITE:SELECTIVE SAVE", false},
             {"WRITE:FULL SAVE FREQUENCY", 10},
             {"DATA_EXPORT:ACTIVE", false},
             {"DATA_EXPORT:NAME", noText},
             {"DISPLAY:AUTOUPDATE", false},
             {"DISPLAY:PARTICLES", true},
             {"DISPLAY:GEOMETRY MODE", 0},
             {"DISPLAY:GEOMETRY OPACITY", 1.0},
             {"DISPLAY:GRID", false},
             {"SOLVE REPORT:PRECISION", 5},
             {"GPU PARAMETERS:USE CUSTOM GEOMETRY GRID", false},
             {"GPU PARAMETERS:GPU GEOMETRY GRID CELL SIZE R", 12.0},
             {"GPU PARAMETERS:GPU AVAILABLE MEMORY PERCENTAGE", 80.0},
             {"GPU PARAMETERS:USE FACTORY GROUP", false},
             {"GPU PARAMETERS:FACTORY GROUP NAMES", noText},
             {"GPU PARAMETERS:GPU NUM PARTICLES", 0u},
             {"GPU PARAMETERS:GPU NUM SPHERES", 0u},
             {"GPU PARAMETERS:GPU NUM CONTACTS PART PART", 0u},
             {"GPU PARAMETERS:GPU NUM CONTACTS PART GEOM", 0u},
             {"GPU PARAMETERS:GPU BUFFER PER SPHERE", 0u}},
            {},
            {}};
}

const SSelectiveSave defaultSelectiveSave{defaultTimestepMask, defaultParticleMask, defaultGeometryMask};

const std::vector<SSelectiveSaveKey>& selectiveSaveKeys()
{
    static const std::vector<SSelectiveSaveKey> keys{
        {"WRITE:SELECTIVE SAVE:TIMESTEP:PARTICLE DATA", &SSelectiveSave::timestepMask, eParticleRows},
        {"WRITE:SELECTIVE SAVE:TIMESTEP:GEOMETRY DATA", &SSelectiveSave::timestepMask, eTriangleRows},
        {"WRITE:SELECTIVE SAVE:TIMESTEP:P<>P CONTACTS", &SSelectiveSave::timestepMask, eSurfaceSurfaceContacts},
        {"WRITE:SELECTIVE SAVE:TIMESTEP:P<>G CONTACTS", &SSelectiveSave::timestepMask, eSurfaceGeometryContacts},
        {"WRITE:SELECTIVE SAVE:TIMESTEP:P<>P COLLISIONS", &SSelectiveSave::timestepMask, eSurfaceSurfaceCollisions},
        {"WRITE:SELECTIVE SAVE:TIMESTEP:P<>G COLLISIONS", &SSelectiveSave::timestepMask, eSurfaceGeometryCollisions},
        {"WRITE:SELECTIVE SAVE:TIMESTEP:BONDS", &SSelectiveSave::timestepMask, eBondRows},
        {"WRITE:SELECTIVE SAVE:TIMESTEP:CUSTOM INTERACTION PROPERTIES", &SSelectiveSave::timestepMask,
         eContactProperties},
        {"WRITE:SELECTIVE SAVE:PARTICLE:BASE", &SSelectiveSave::particleMask, 1},
        {"WRITE:SELECTIVE SAVE:PARTICLE:VELOCITY", &SSelectiveSave::particleMask, eParticleVelocity},
        {"WRITE:SELECTIVE SAVE:PARTICLE:ANGULAR VELOCITY", &SSelectiveSave::particleMask, eParticleAngularVelocity},
        {"WRITE:SELECTIVE SAVE:PARTICLE:FORCE AND TORQUE", &SSelectiveSave::particleMask, eParticleForces},
        {"WRITE:SELECTIVE SAVE:PARTICLE:CUSTOM PROPERTIES", &SSelectiveSave::particleMask, eParticleProperties},
        {"WRITE:SELECTIVE SAVE:GEOMETRY:BASE", &SSelectiveSave::geometryMask, 1},
        {"WRITE:SELECTIVE SAVE:GEOMETRY:FORCE AND TORQUE", &SSelectiveSave::geometryMask, eGeometryForces},
        {"WRITE:SELECTIVE SAVE:GEOMETRY:CUSTOM PROPERTIES", &SSelectiveSave::geometryMask, eGeometryProperties},
    };
    return keys;
}

// ---------------------------------------------------------------- analyst: playing and recording

static SKeySet playbackKeys()
{
    return {"",
            {{"STEP:MODE", 0},
             {"STEP:TIME", 1e-6}, // s
             {"STEP:ITERATIONS", 1},
             {"PLAYBACK:MODE", 0},
             {"PLAYBACK:REALTIME", 2.0},
             {"PLAYBACK:PLAYBACK RATIO", 1.0},
             {"PLAYBACK:STEP FRAME RATE", 25}},
            {{"KFRAME",
              {},
              {},
              {{"", {{"INDEX", 0}, {"DFG PATH", std::string()}, {"VIEW", std::string()}, {"STOP", false}}, {}, {}}}}},
            {}};
}

static SKeySet imageKeys()
{
    return {"IMAGE EXPORT",
            {{"FILE NAME", noText},
             {"WIDTH", 1280},
             {"HEIGHT", 720},
             {"REZ", 72},
             {"SCREEN GRAB", false},
             {"CAPTURE MODE", 1}},
            {},
            {}};
}

static SKeySet videoKeys()
{
    return {"VIDEO CONFIG",
            {{"FILE NAME", noText},
             {"FORMAT", QString("Images")},
             {"EVO CODEC", QString("Motion-JPEG")},
             {"AVI CODEC", QString("Uncompressed")},
             {"WMV CODEC", QString("Windows Media Video V8")},
             {"MP4 CODEC", QString("H264")},
             {"MKV CODEC", QString("VP9")},
             {"WEBM CODEC", QString("VP9")},
             {"FRAME WIDTH", 640},
             {"FRAME HEIGHT", 480},
             {"QUALITY", 95},
             {"BITRATE", 5600},
             {"KEY FRAME INTERVAL", 3},
             {"USE TIMESTEP RATE", true},
             {"STOP REC INDEX", -1},
             {"USE BITRATE", true},
             {"USE KEYFRAME", true}},
            {},
            {}};
}

// ---------------------------------------------------------------- analyst: exports

static SKeySet exportKeys()
{
    const SKeySet text{
        "TEXT", {{"DELIMITER", ','}, {"MAX COLUMNS", -1}, {"SUB SELECTION QUERIES", std::set<std::string>()}}, {}, {}};
    const SKeySet oneExport{"",
                            {{"NAME", noText},
                             {"FILE", noText},
                             {"TITLE", noText},
                             {"USE ALL TIMESTEPS", true},
                             {"EXPORT DOMAIN", false},
                             {"USE COLUMNS", false},
                             {"SELECTED GEOMETRY", false},
                             {"SELECTED PARTICLES", false},
                             {"START TIMESTEP", 0},
                             {"END TIMESTEP", 0},
                             {"NOTATION", 0},
                             {"PRECISION", 5},
                             {"STEP:MODE", 0u},
                             {"STEP:TIME", 1e-6}, // s
                             {"STEP:ITERATIONS", 1},
                             {"EXPORT FORMAT", QString("Text")}},
                            {text},
                            {}};
    return {"DATA EXPORT", {}, {}, {oneExport}, true};
}

// ---------------------------------------------------------------- analyst: the model's display

static SKeySet userTextKeys()
{
    return {"USER TEXT", {}, {}, {{"", {{"TEXT", noText}, {"POSITION", origin}, {"COLOUR", QColor(0, 0, 0)}}, {}, {}}}};
}

static SKeySet representationKeys()
{
    const SKeySet arrow{"", {{"BASE ATTR", noText}, {"LENGTH ATTR", noText}, {"DIRECTION ATTR", noText}}, {}, {}};
    SKeySet stream = placedAt("STREAM", arrow);
    for (const SKeyDefault& key :
         {SKeyDefault{"LENGTH", 0}, SKeyDefault{"CURRENT TIMESTEP", 0}, SKeyDefault{"FADE", false}})
        stream.keys.push_back(key);
    return {"PARTICLE REPRESENTATION",
            {{"ACTIVE", noText, true}}, // a name or a switch
            {placedAt("DEFAULT", arrow), placedAt("CONE", arrow), placedAt("VECTOR", arrow), stream},
            {{"", {{"ACTIVE", noText, true}, {"NAME", noText}, {"TEMPLATE NAME", noText}}, {}, {}}}};
}

/// From blue to red, each a triple of red, green and blue from 0 to 1.
static SKeySet chartKeys()
{
    return {"CHART",
            {{"RANGE:MIN:VALUE", 0.0},
             {"RANGE:MAX:VALUE", 1.0},
             {"RANGE:MIN:AUTO", true},
             {"RANGE:MAX:AUTO", true},
             {"RANGE:MIN:COLOUR", C3DVector(0.0, 0.0, 1.0)},
             {"RANGE:LOW1:COLOUR", C3DVector(0.0, 0.5, 1.0)},
             {"RANGE:LOW2:COLOUR", C3DVector(0.0, 1.0, 1.0)},
             {"RANGE:LOW3:COLOUR", C3DVector(0.0, 1.0, 0.5)},
             {"RANGE:MID:COLOUR", C3DVector(0.0, 1.0, 0.0)},
             {"RANGE:HIGH1:COLOUR", C3DVector(0.5, 1.0, 0.0)},
             {"RANGE:HIGH2:COLOUR", C3DVector(1.0, 1.0, 0.0)},
             {"RANGE:HIGH3:COLOUR", C3DVector(1.0, 0.5, 0.0)},
             {"RANGE:MAX:COLOUR", C3DVector(1.0, 0.0, 0.0)},
             {"STATIC:COLOUR", C3DVector(0.5, 0.5, 0.5)},
             {"WIDTH", 0.1},
             {"HEIGHT", 0.5},
             {"INTERVALS", 9u},
             {"SMOOTH", true},
             {"LEVELS", 9},
             {"TITLE", noText},
             {"TEXT_COLOR", QColor(0, 0, 0)},
             {"ALIGNMENT", 0},
             {"AUTO TITLE", true},
             {"ENABLED", false},
             {"START POINT", origin},
             {"NUMBER FORMAT:COUNT", 3u},
             {"NUMBER FORMAT:USE DECIMAL", false}},
            {},
            {}};
}

static SKeySet displayOptionKeys()
{
    return {"DISPLAY OPTIONS",
            {},
            {},
            {{"",
              {{"NAME", noText},
               {"TYPE", noText},
               {"USE FOR COLOURING", false},
               {"COLOUR", C3DVector(0.5, 0.5, 0.5)},
               {"ACTIVE", true},
               {"TRANSPARENCY", 0.0f},
               {"POLYGON MODE", 0},
               {"ATTR NAME", noText},
               {"COMP NAME", noText},
               {"COLOUR BY ATTR", false},
               {"SMOOTH", true},
               {"HIGHLIGHT ALL", false},
               {"DONT_DRAW_OOB", false},
               {"USE FOR REPRESENTATION", false},
               {"CONTACT ATTR", noText},
               {"BOND ATTR", noText},
               {"BOND DISTANCE THRESHOLD", 0.0},
               {"TAKE COLOURING FROM", noText},
               {"USE LOGARITHMIC SCALING", false},
               {"TEXTURE PATH", noText}},
              {chartKeys()},
              {}}}};
}

static SKeySet clippingKeys()
{
    const SKeySet element{"",
                          {{"ENABLED", true},
                           {"IN USE", false},
                           {"VISUAL REP", true},
                           {"X", 0.0},
                           {"Y", 0.0},
                           {"Z", 0.0},
                           {"DISTANCE", 0.0},
                           {"DEPTH", 0.0},
                           {"TYPES:PARTICLE", true},
                           {"TYPES:GEOMETRY", true},
                           {"TYPES:CONTACT", true},
                           {"TYPES:BOND", true}},
                          {},
                          {}};
    return {"CLIPPING GROUPS",
            {{"CURRENT GROUP", noText}},
            {},
            {{"",
              {{"NAME", noText}, {"ACTIVE", 0}, {"ENABLED", false}},
              {{"DOMAIN", {}, {}, {element}}, {"PLANE", {}, {}, {element}}, {"SLICE", {}, {}, {element}}},
              {}}}};
}

// ---------------------------------------------------------------- analyst

SKeySet analystKeys()
{
    return {"",
            {{"ITERATION OPTIONS", std::set<int>{1, 5, 10, 50, 100, 500, 1000}},
             {"PLAYBACK RATIO OPTIONS", std::set<double>{0.1, 0.2, 0.5, 1.0, 2.0, 5.0, 10.0}}},
            {},
            {}};
}

SKeySet analystParts()
{
    return {"",
            {},
            {playbackKeys(), imageKeys(), videoKeys(), exportKeys(), userTextKeys(), representationKeys(),
             displayOptionKeys(), clippingKeys(), viewKeys()},
            {}};
}

} // namespace NBrenmark
