#pragma once
// Geometry groups, motions and particle factories as legacy decks hold them, byte by byte for file versions
// from 20.0.16 on: in a creator block and in a timestep. Nothing here knows the library's own forms.

#include "support/bytes.h"

#include <array>
#include <vector>

namespace NBrenmark {

using STriple = std::array<double, 3>;

/// Whether blocks of a version have what came with another one. In the old numbering 3 is 20.
bool since(quint32 version, quint32 major, quint32 minor, quint32 build);

CBytes triple(const STriple& t);
inline CBytes packed(const CBytes& arrays, bool deflate) { return deflate ? CBytes().deflated(arrays) : arrays; }

/// How many there are, then each of them.
template <class TItems, class TBytes>
CBytes listBytes(const TItems& items, TBytes&& bytesOf)
{
    CBytes b;
    b.i32(static_cast<qint32>(items.size()));
    for (const auto& item : items)
        b += bytesOf(item);
    return b;
}

/// The stored values of one custom property.
struct SDeckValueList
{
    int rows = 0, width = 1;
    std::vector<double> values; ///< row by row
    bool deflated = false;
};

/// Custom properties as one owner stores them.
struct SDeckCustomProperties
{
    std::vector<SDeckValueList> lists;
    int itemCount = 0;
};

// ---------------------------------------------------------------- motions

struct SDeckMotion
{
    QString kind, name;
    double start = 0.0, end = 9999.0;
    bool isRotation = false;
    STriple pointOfAction{}; ///< the two of a rotation
    int movesWithBody = 1;
    std::vector<double> numbers{}; ///< after that, in the order of the file

    // In a timestep, a linear rotation alone.
    STriple pointNow{};
    std::vector<double> vectorsNow{}; ///< six: angular velocity and acceleration
};

SDeckMotion deckSlide(); ///< "Linear Translation"
SDeckMotion deckTurn();  ///< "Linear Rotation"
SDeckMotion deckShake(); ///< "Sinusoidal Translation"
SDeckMotion deckSwing(); ///< "Sinusoidal Rotation"

/// With the word of its kind.
CBytes motionBytes(const SDeckMotion& motion);
CBytes motionListBytes(const std::vector<SDeckMotion>& motions);

// ---------------------------------------------------------------- factories

/// A parameter: a word, what an object of that kind stores in a creator block, and its state.
struct SDeckParam
{
    QString kind;
    CBytes stored, state;
};

struct SDeckCustomParam
{
    QString property, kind;
    CBytes stored;
};

/// Its two kinds have fields of their own, of which a factory uses its half.
struct SDeckFactory
{
    QString kind = "dynamic", name;
    int creationCount = 3, maxAttempts = 30;
    SDeckParam velocity{"fixed", CBytes().f64s({0, 0, -1.5}), {}};
    SDeckParam size{"fixed", CBytes().f64(1.25), {}};
    std::vector<QString> typeNames; ///< of which each has that size; in the order of the names
    SDeckParam orientation{"random", {}, {}};
    SDeckParam angVel{"fixed", CBytes().f64s({1, 2, 3}), {}};
    SDeckParam type;
    SDeckParam position;
    CBytes charge; ///< kind and numbers, where the version stores it
    std::vector<SDeckCustomParam> customParams;
    std::vector<qint32> counters{4, 3, 2, 1};
    int numToCreate = 500;
    double creationTime = 0.125;
    int massCreation = 1;
    double massToCreate = 12.5;
    int unlimited = 0;
    double creationRate = 100.0;
    int massGeneration = 0;
    double rateChangeTime = 0.5;
    int completed = 1, fillShape = 0;

    // In a timestep.
    int creationCountNow = 7;
    STriple account{1.5, 0.25, 0.5};
    std::vector<qint32> countersNow{1, 2, 3, 4};
    int createdSinceRateChange = 5, completedNow = 0;
};

/// One type of that name, at random positions.
SDeckFactory deckFactory(const QString& name, const QString& typeName);

/// With kind and name.
CBytes factoryBytes(quint32 version, const SDeckFactory& factory);
CBytes factoryStateBytes(quint32 version, const SDeckFactory& factory);

// ---------------------------------------------------------------- groups

/// Vertices and triangles with ids from firstId on.
struct SDeckMesh
{
    std::vector<qint32> vertexIds;
    std::vector<double> coords;   ///< as they were made
    std::vector<double> imported; ///< CAD only
    std::vector<qint32> triangleIds, nodes;
    std::vector<double> forces, charges;
    int mask = 7;
    bool deflated = false;

    int vertices() const { return static_cast<int>(vertexIds.size()); }
    int triangles() const { return static_cast<int>(nodes.size() / 3); }
};

/// The corner of a cube of that length: a closed tetrahedron of volume length^3 / 6.
SDeckMesh tetrahedron(int firstId, double length);
/// A flat strip of so many triangles, each of area 1/2.
SDeckMesh strip(int firstId, int triangles);

/// What a timestep holds of a group.
struct SDeckGroupState
{
    int isStatic = 1, resetVelocities = 0;
    STriple velocity{0.1, 0.2, 0.3};
    std::vector<std::array<double, 6>> history;
    std::array<double, 16> transform{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
    STriple translation{};
    std::array<STriple, 4> centres{}; ///< of mass, original; of action, original
    double time = 0.0;
    int rows = 0, mask = 4;
    bool deflated = false;
    CBytes arrays; ///< of the triangles, by the mask
    SDeckCustomProperties properties;
};

struct SDeckGroup
{
    int index = 0;
    QString shape;
    CBytes own; ///< of the shape; a CAD shape stores it from 23.0.1 on
    std::vector<SDeckMotion> motions;
    std::vector<SDeckFactory> factories;
    std::array<double, 6> bounds{1, 2, 3, -1, -2, -3}; ///< upper, lower
    std::array<double, 6> inertia{1.5, 2.5, 3.5, 0.5, 0.25, 0.125};
    STriple desiredForce{1, 0, 2};
    QString name;
    int uniqueId = 40;
    SDeckMesh mesh;
    int isStatic = 1, closed = 1;
    QString materialName = "glass";
    int isReal = 1;
    double enclosed = 8.5, surface = 9.5, time = 0.5, gain = 0.75;
    int resetVelocities = 1;
    std::array<STriple, 4> centres{{{1, 2, 3}, {4, 5, 6}, {7, 8, 9}, {10, 11, 12}}};
    STriple velocity{3, 2, 1};
    std::vector<std::array<double, 6>> history;
    std::array<double, 16> transform{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
    STriple translation{};
    int exempt = 1;
    double startCharge = 1e-9;
    SDeckCustomProperties properties;
    SDeckGroupState state;
};

/// With index and shape.
CBytes groupBytes(quint32 version, const SDeckGroup& group);
/// The list of a creator block.
CBytes groupListBytes(quint32 version, const std::vector<SDeckGroup>& groups);
CBytes groupStateBytes(quint32 version, const SDeckGroup& group);

/// What the four shapes store of themselves.
CBytes boxBytes();
CBytes cylinderBytes();
CBytes polygonBytes();
CBytes cadBytes();

/// Four groups, one of each shape: a moving box with all motions and two factories of the sample deck's
/// types, a still cylinder, a still polygon and a moving CAD mesh.
std::vector<SDeckGroup> sampleGroups();

} // namespace NBrenmark
