#pragma once
// Whole legacy decks, built byte by byte for file versions from 20.0.16 (or 3.0.16) on: what readers are held
// against. The records below say what a deck holds, the functions what that looks like on disk in a
// version; nothing here knows the library's own forms.

#include "support/legacy_deck_geometry.h"

#include "core/version.h"

#include <array>
#include <utility>
#include <vector>

namespace NBrenmark {

// ---------------------------------------------------------------- what a deck holds

struct SDeckMaterial
{
    QString name;
    double poissonsRatio = 0.3, shearModulus = 1e7, density = 2500.0, workFunction = 0.0;
    int type = 1; ///< from 30.0.4 on
};

struct SDeckInteraction
{
    QString key;
    double restitution = 0.5, staticFriction = 0.5, rollingFriction = 0.01;
};

struct SDeckSphere
{
    QString name;
    double contactRadius = 0.001, physicalRadius = 0.001;
    STriple position{};
};

/// The fields word of current decks: bits 0 to 8, and 13 for which nothing is stored.
constexpr qint32 deckFields = 0x21FF;

/// Particles of one type: their arrays one after the other, as the fields word announces them.
struct SDeckRows
{
    int count = 0;
    qint32 fields = deckFields;
    CBytes arrays;
    bool deflated = false;
};

struct SDeckParticleType
{
    QString name, materialName;
    double rawMass = 1e-5, rawVolume = 4e-9;
    STriple rawInertia{1e-12, 1e-12, 1e-12};
    int calcProps = 1;
    std::vector<SDeckSphere> spheres;
    SDeckRows rows;
    SDeckCustomProperties properties;
};

struct SDeckParticleTypes
{
    int maxId = 0;
    std::vector<SDeckParticleType> types;
};

/// The head of a stored object. branchWord is there if reservedWord isn't 0, below 21.0.3.
struct SDeckStamp
{
    qint32 reservedWord = 0, branchWord = 0, buildRevision = 28438;
    QString buildBranch = "Brenmark/trunk";
};

struct SDeckModel
{
    QString name;
    int kind = 0;
    CBytes parameters = CBytes(); ///< the default model has none of its own
};

struct SDeckLimits
{
    int velocityRestricted = 0;
    double velocityLimit = 0.0;
    int angularVelocityRestricted = 0;
    double angularVelocityLimit = 0.0;
};

struct SDeckCreator
{
    SDeckStamp stamp;
    int legacyStreamFlag = 0;
    STriple gravity{0.0, 0.0, -9.81};
    STriple domainMin{-0.05, -0.05, -0.01};
    STriple domainMax{0.05, 0.05, 0.21};
    std::array<int, 3> periodic{};
    std::vector<SDeckModel> particleParticle; ///< defaultDeckModel unless told otherwise
    std::vector<SDeckModel> particleGeometry, forces;
    SDeckParticleTypes particles;
    std::vector<SDeckMaterial> materials;
    std::vector<SDeckInteraction> interactions;
    std::vector<SDeckGroup> groups;
    QString title = "Title";
    qint32 reservedTitleWord = 3;
    double damping = 0.0;
    QString description = "Description";
    SDeckLimits limits;

    SDeckCreator();
};

struct SDeckEnergy
{
    double kinetic = 0.0, potential = 0.0, createdParticles = 0.0, destroyedParticles = 0.0, external = 0.0;
    double lostThroughContacts = 0.0, lostThroughCapping = 0.0;
    STriple totals{}; ///< the three after the current value
};

/// The four words of a pair: type and element of the first end, type or group and element of the second.
using SDeckPair = std::array<quint32, 4>;

/// Records of collisions: their arrays one after the other, as the mask announces them.
struct SDeckCollisions
{
    int count = 0;
    quint32 mask = 0;
    CBytes arrays;
    bool deflated = false;
};

struct SDeckContactRecord
{
    int kind = 0, type = 0;
    QString name;
    double scale = 1.0;
    STriple defaultValue{};
    std::vector<double> values; ///< one or three a row
};

/// Contacts of one family, in the same manner.
struct SDeckContacts
{
    int count = 0;
    qint32 fields = 255;
    CBytes arrays;
    bool deflated = false;
    int collisionsActive = 0;
    SDeckCollisions collisions; ///< nested
    int recordRows = 0;
    std::vector<SDeckContactRecord> records;
    SDeckCustomProperties properties;
};

struct SDeckBonds
{
    int count = 0;
    CBytes arrays;
    bool deflated = false;
};

/// Surface to surface all 25 arrays, surface to geometry those up to the triangle's position.
constexpr quint32 surfaceCollisionMask = 0x1FFFFFF;
constexpr quint32 geometryCollisionMask = 0x3FFFFF;

/// What a timestep holds of pairs: the family between surfaces first, then that with geometry.
struct SDeckPairs
{
    std::array<SDeckContacts, 2> contacts;
    std::array<SDeckCollisions, 2> collisions;
    std::array<SDeckBonds, 2> bonds;

    SDeckPairs(); ///< none of each
};

struct SDeckPluginFactory
{
    QString kind = "library", name;
    QString library; ///< from 23.0.0 on
};

struct SDeckTimestep
{
    SDeckStamp stamp;
    int isFull = 1;
    qint32 timestepMask = 255, particleMask = 47, geometryMask = 41;
    int fullGeometry = 0;           ///< the groups are stored in creator form
    std::vector<SDeckGroup> groups; ///< those of the creator block
    SDeckParticleTypes particles;
    SDeckPairs pairs;
    std::vector<SDeckPluginFactory> pluginFactories;
    double time = 0.0, elapsedTime = 0.0;
    int runNumber = 1;
    QString date = "17/03/18";
    SDeckEnergy energy;
    std::vector<std::pair<QString, int>> removed; ///< in the order of the file: from the greatest name down
    SDeckCustomProperties properties;
    bool shortOffset = false; ///< stored under the older name, with a creator offset of four bytes
};

// ---------------------------------------------------------------- what that looks like on disk

/// The model that a deck has where nothing else was chosen.
SDeckModel defaultDeckModel();

CBytes stampBytes(quint32 version, const SDeckStamp& stamp);
/// After the key of the material map.
CBytes materialBytes(quint32 version, const SDeckMaterial& material);
CBytes interactionBytes(const SDeckInteraction& interaction);
CBytes customPropertyBytes(const SDeckCustomProperties& properties);
/// From the marker of a type to the last of its spheres.
CBytes particleDefinitionBytes(const SDeckParticleType& type);
CBytes particleRowBytes(const SDeckRows& rows);
CBytes particleTypeBytes(quint32 version, const SDeckParticleType& type);
CBytes particleTypesBytes(quint32 version, const SDeckParticleTypes& particles);
CBytes physicsBytes(const SDeckCreator& creator);

/// After the name of a creator block.
CBytes creatorBytes(quint32 version, const SDeckCreator& creator);

/// From the stamp of a timestep to the particle types, exclusive.
CBytes timestepHeadBytes(quint32 version, const SDeckTimestep& timestep);
CBytes contactFamilyBytes(quint32 version, const SDeckContacts& family);
CBytes collisionFamilyBytes(const SDeckCollisions& family);
CBytes bondFamilyBytes(const SDeckBonds& family);
/// Contacts, collisions and bonds, as far as the version stores them.
CBytes pairBytes(quint32 version, const SDeckPairs& pairs);
CBytes pluginFactoryBytes(quint32 version, const std::vector<SDeckPluginFactory>& factories);
/// From the time on.
CBytes timestepTailBytes(quint32 version, const SDeckTimestep& timestep);
/// After the creator pair of a timestep block.
CBytes timestepBytes(quint32 version, const SDeckTimestep& timestep);

/// Bytes that a row takes in the array of a fields bit; 0 for a bit without an array.
int deckRowBytes(int bit);
/// What makeDeckRows puts in a place: all values of a deck differ.
double deckValue(int firstId, int bit, int row, int component);
/// Particles with the ids from firstId on, every array of the fields filled by deckValue.
SDeckRows makeDeckRows(int firstId, int count, qint32 fields = deckFields, bool deflated = false);
SDeckValueList makeDeckValues(double first, int rows, int width, bool deflated = false);

/// What the arrays of contacts hold beside the pairs is deckValue of the first number and the array's bit;
/// words are bit x 1000 + row. Of the bits 0 to 7, 11 to 14 each has its array, and 13 a second one.
CBytes contactArrays(int first, const std::vector<SDeckPair>& pairs, const std::vector<double>& overlaps,
                     qint32 fields = 255);
SDeckContacts makeDeckContacts(int first, const std::vector<SDeckPair>& pairs, const std::vector<double>& overlaps,
                               qint32 fields = 255, bool deflated = false);
/// Ids are first, first + 1 and so on; of the ends 100 and 200 more.
SDeckCollisions makeDeckCollisions(int first, int count, quint32 mask, bool deflated = false);
/// Every bond broke at 0.5 + its row, whatever its state says.
SDeckBonds makeDeckBonds(int first, const std::vector<SDeckPair>& pairs, const std::vector<qint32>& states,
                         bool deflated = false);

/// A small deck's model: two materials, their interactions, two particle types without particles.
SDeckCreator sampleCreator();
/// A timestep of sampleCreator's types with some particles, energies and removed particles.
SDeckTimestep sampleTimestep(double time);

// ---------------------------------------------------------------- the files

/// Where a block stands.
struct SDeckPlace
{
    quint32 segment = 0;
    quint64 offset = 0; ///< of the block's name
    quint64 size = 0;
};

/// A deck that grows block by block and is written out as a family of files.
class CLegacyDeck
{
public:
    explicit CLegacyDeck(quint32 version);

    /// Adds a creator block. Timesteps that follow belong to it.
    CLegacyDeck& creator(const SDeckCreator& creator);
    /// Adds a timestep block and its index entry.
    CLegacyDeck& timestep(const SDeckTimestep& timestep);
    /// What follows goes to the next .scn file.
    CLegacyDeck& nextSegment();

    /// The version of the blocks, and of the header unless those are set.
    quint32 version, firstVersion, lastVersion, reservedFlag = 0, edition = 1;
    int announcedTimesteps = -1; ///< the header's count if it shall differ from what there is

    CBytes header() const;
    CBytes index() const;
    /// 0 is the .dem file, header included.
    CBytes segment(int number) const;
    int segmentCount() const { return static_cast<int>(segments.size()); }
    const std::vector<SDeckPlace>& creatorPlaces() const { return creators; }
    const std::vector<SDeckPlace>& timestepPlaces() const { return timesteps; }

    /// Writes name.dem, its segments and name.idx; gives the path of name.dem.
    QString write(const QString& folder, const QString& name) const;

private:
    struct SEntry
    {
        double time = 0.0;
        int isFull = 1;
    };

    SDeckPlace append(const CBytes& block);

    std::vector<CBytes> segments;
    std::vector<SDeckPlace> creators, timesteps;
    std::vector<SEntry> entries;
};

/// Three timesteps of a small deck: one creator block, or another one in front of the third.
CLegacyDeck sampleDeckOf(quint32 version, bool modelChanges = false);

} // namespace NBrenmark
