#include "support/legacy_deck_geometry.h"

#include "support/legacy_deck.h"

namespace NBrenmark {

static constexpr const char* cadShape = "cad_geometry";

bool since(quint32 version, quint32 major, quint32 minor, quint32 build)
{
    const quint32 counted = (version >> 16) == 3 ? (version & 0xFFFFu) | 20u << 16 : version;
    return counted >= (major << 16 | minor << 8 | build);
}

static bool isLater(quint32 version, quint32 major, quint32 minor, quint32 build)
{
    return since(version, major, minor, build + 1);
}

CBytes triple(const STriple& t) { return CBytes().f64s({t[0], t[1], t[2]}); }

template <class TNumbers>
static CBytes numbers(const TNumbers& values)
{
    CBytes b;
    for (const double value : values)
        b.f64(value);
    return b;
}

static CBytes word(qint32 number) { return CBytes().i32(number); }

// ---------------------------------------------------------------- motions

SDeckMotion deckSlide()
{
    SDeckMotion m{"Linear Translation", "slide", 0.5};
    m.end = 4.0;
    m.numbers = {1.5, -0.25, 0, 0, 0, 2, 0, 0}; // velocity, acceleration, start, end
    return m;
}

SDeckMotion deckTurn()
{
    SDeckMotion m{"Linear Rotation", "turn", 0.25};
    m.isRotation = true;
    m.pointOfAction = {0, 0, 0.5};
    m.movesWithBody = 0;
    m.numbers = {0, 0, 0, 0, 0, 4, 3.0, 0.5}; // start, end, velocity, acceleration
    m.pointNow = {1, 2, 3};
    m.vectorsNow = {0, 3, 0, 0, 0.5, 0};
    return m;
}

SDeckMotion deckShake()
{
    SDeckMotion m{"Sinusoidal Translation", "shake", 1.0};
    m.numbers = {0, 3, 4, 0.125, 50.0}; // displacement, offset, frequency
    return m;
}

SDeckMotion deckSwing()
{
    SDeckMotion m{"Sinusoidal Rotation", "swing", 1.0}; // as early as the one before: the order stays
    m.isRotation = true;
    m.pointOfAction = {0.25, 0, 0};
    m.numbers = {0, 0, -2, 0.5, 25.0};
    return m;
}

CBytes motionBytes(const SDeckMotion& m)
{
    CBytes b;
    b.text(m.kind).text(m.name).f64(m.start).f64(m.end);
    if (m.isRotation)
        (b += triple(m.pointOfAction)).i32(m.movesWithBody);
    return b += numbers(m.numbers);
}

CBytes motionListBytes(const std::vector<SDeckMotion>& motions) { return listBytes(motions, motionBytes); }

// ---------------------------------------------------------------- factories

SDeckFactory deckFactory(const QString& name, const QString& typeName)
{
    SDeckFactory f;
    f.name = name;
    f.typeNames = {typeName};
    f.type = {"fixed", CBytes().text(typeName), {}};
    // style, density, multiplier, angle, separation, seed position and vector
    f.position = {"random", CBytes().i32(1).f64s({0.4, 1.25, 1.5, 0.0625, 0.5, 0.25, 0.125, 0, 0, 1}),
                  CBytes().f64s({0.1, 0.2, 0.3, 0, 1, 0})};
    f.charge.text("fixed").f64(1e-9);
    return f;
}

CBytes factoryBytes(quint32 version, const SDeckFactory& f)
{
    const auto param = [](const SDeckParam& p) { return CBytes().text(p.kind) + p.stored; };
    CBytes b;
    b.text(f.kind).text(f.name).i32(f.creationCount).i32(f.maxAttempts) += param(f.velocity);
    if (since(version, 30, 0, 0))
        b += listBytes(f.typeNames, [&](const QString& name) { return CBytes().text(name) + param(f.size); });
    else
        b += param(f.size);
    b += param(f.orientation) + param(f.angVel) + param(f.type) + param(f.position);
    if (!isLater(version, 26, 0, 0))
        b += f.charge;
    if (since(version, 21, 0, 1))
        b += listBytes(f.customParams,
                       [](const SDeckCustomParam& p) { return CBytes().text(p.property).text(p.kind) + p.stored; });
    if (since(version, 20, 0, 23))
        b += listBytes(f.counters, word);
    if (f.kind == "dynamic") {
        b.i32(f.numToCreate).i32(f.unlimited).f64(f.creationRate).f64(f.creationTime).f64(f.massToCreate).i32(0);
        if (since(version, 22, 0, 1))
            b.i32(f.massCreation).i32(f.massGeneration);
        if (since(version, 22, 0, 2))
            b.f64(f.rateChangeTime);
    }
    else {
        b.i32(f.completed).f64(f.creationTime).i32(f.fillShape).i32(f.numToCreate);
        if (since(version, 22, 0, 2))
            b.i32(f.massCreation).f64(f.massToCreate);
    }
    return b;
}

CBytes factoryStateBytes(quint32 version, const SDeckFactory& f)
{
    CBytes b;
    b.i32(f.creationCountNow) += f.velocity.state;
    if (since(version, 30, 0, 0))
        b += listBytes(f.typeNames, [&](const QString& name) { return CBytes().text(name) + f.size.state; });
    else
        b += f.size.state;
    b += f.orientation.state + f.angVel.state + f.type.state + f.position.state;
    if (since(version, 22, 0, 1))
        b += triple(f.account);
    if (since(version, 20, 0, 23))
        b += listBytes(f.countersNow, word);
    if (f.kind == "dynamic") {
        b.i32(f.createdSinceRateChange);
        if (since(version, 30, 0, 0))
            b.i32(0); // accounts of types
    }
    else
        b.i32(f.completedNow);
    return b;
}

// ---------------------------------------------------------------- meshes

static void number(SDeckMesh& mesh, int firstId)
{
    for (int vertex = 0; vertex < static_cast<int>(mesh.coords.size() / 3); ++vertex)
        mesh.vertexIds.push_back(firstId + vertex);
    for (int triangle = 0; triangle < mesh.triangles(); ++triangle) {
        mesh.triangleIds.push_back(firstId + triangle);
        for (int i = 0; i < 7; ++i)
            mesh.forces.push_back(firstId + triangle + 0.125 * i);
    }
}

SDeckMesh tetrahedron(int firstId, double length)
{
    SDeckMesh mesh;
    mesh.coords = {0, 0, 0, length, 0, 0, 0, length, 0, 0, 0, length};
    mesh.nodes = {0, 2, 1, 0, 1, 3, 0, 3, 2, 1, 2, 3};
    number(mesh, firstId);
    return mesh;
}

SDeckMesh strip(int firstId, int triangles)
{
    SDeckMesh mesh;
    for (int vertex = 0; vertex < triangles + 2; ++vertex) {
        const int pair = vertex / 2;
        mesh.coords.insert(mesh.coords.end(), {double(pair), vertex % 2 == 0 ? 0.0 : 1.0, 0.0});
    }
    for (int triangle = 0; triangle < triangles; ++triangle)
        mesh.nodes.insert(mesh.nodes.end(), {triangle, triangle + 1, triangle + 2});
    number(mesh, firstId);
    return mesh;
}

static CBytes triangleArrays(const SDeckMesh& mesh)
{
    CBytes b;
    if (mesh.mask & 1)
        b.rawI32(mesh.triangleIds);
    if (mesh.mask & 2)
        b.rawI32(mesh.nodes);
    if (mesh.mask & 4)
        b.rawF64(mesh.forces);
    if (mesh.mask & 8)
        b.rawF64(mesh.charges);
    return b;
}

/// From the counts to the arrays.
static CBytes meshBytes(quint32 version, const SDeckGroup& g)
{
    const SDeckMesh& mesh = g.mesh;
    CBytes arrays;
    arrays.rawI32(mesh.vertexIds);
    const bool hasImport = g.shape == QString(cadShape) && since(version, 23, 0, 4);
    if (hasImport)
        arrays.rawF64(mesh.imported);
    if (!hasImport || g.isStatic == 0)
        arrays.rawF64(mesh.coords);
    if (mesh.triangles() != 0)
        arrays += triangleArrays(mesh);
    CBytes b;
    b.i32(mesh.vertices()).i32(mesh.triangles());
    b.i8(mesh.deflated ? 1 : 0).i8(g.isStatic).i32(mesh.mask);
    return b += packed(arrays, mesh.deflated);
}

// ---------------------------------------------------------------- groups

CBytes boxBytes()
{
    return CBytes().f64s({0.5, 0.25, 0.125, 0.1, 0.2, 0.3, 2, 3, 4}).i32(1).i32(0).i32(1).i32(0).i32(1).i32(1);
}

CBytes cylinderBytes()
{
    return CBytes().f64s({0, 0, -0.5}).f64s({0, 0, 0.5}).f64s({0.25, 0.375}).i32(8).i32(1).i32(0);
}

CBytes polygonBytes()
{
    return CBytes().f64s({0, 1, 0}).f64s({1, 2, 3}).f64s({0.75, 0.1}).i32(5).f64s({2, 1}).f64s({0.4, 0.5, 0.6});
}

CBytes cadBytes()
{
    // shift along x by 2, a quarter turn about z
    return CBytes().f64s({2, 1.5707963267948966}).f64s({0, 0, 0, 1, 0, 0}).f64s({0, 0, 0, 0, 0, 1});
}

static CBytes historyBytes(const std::vector<std::array<double, 6>>& history)
{
    return listBytes(history, numbers<std::array<double, 6>>);
}

/// Centre of mass and point of action, each with the original one, as far as the version has them.
static CBytes centreBytes(quint32 version, const std::array<STriple, 4>& centres, bool hasFirst)
{
    CBytes b;
    if (hasFirst)
        b += triple(centres[0]);
    if (since(version, 25, 0, 0))
        b += triple(centres[1]);
    if (since(version, 25, 0, 2))
        b += triple(centres[2]) + triple(centres[3]);
    return b;
}

CBytes groupBytes(quint32 version, const SDeckGroup& g)
{
    CBytes b;
    b.i32(g.index).text(g.shape);
    if (g.shape != QString(cadShape) || since(version, 23, 0, 1))
        b += g.own;
    b += motionListBytes(g.motions);
    b += listBytes(g.factories, [=](const SDeckFactory& factory) { return factoryBytes(version, factory); });
    b += numbers(g.bounds) + numbers(g.inertia) + triple(g.desiredForce);
    b.text(g.name);
    if (since(version, 24, 0, 30))
        b.i32(g.uniqueId);
    b += meshBytes(version, g);
    b.i32(g.closed).text(g.materialName).i32(g.isReal).i32(0);
    b.f64s({g.enclosed, g.surface, g.time, g.gain}).i32(g.resetVelocities);
    b += centreBytes(version, g.centres, true);
    b += triple(g.velocity) + historyBytes(g.history) + numbers(g.transform);
    if (since(version, 25, 0, 3))
        b += triple(g.translation);
    if (!isLater(version, 26, 0, 0) || since(version, 27, 0, 3))
        b.i32(g.exempt).f64(g.startCharge);
    if (since(version, 23, 0, 0))
        b += customPropertyBytes(g.properties);
    return b;
}

CBytes groupListBytes(quint32 version, const std::vector<SDeckGroup>& groups)
{
    return listBytes(groups, [=](const SDeckGroup& group) { return groupBytes(version, group); });
}

CBytes groupStateBytes(quint32 version, const SDeckGroup& g)
{
    const SDeckGroupState& s = g.state;
    CBytes b;
    b.i8(s.isStatic);
    if (s.isStatic == 0) {
        if (since(version, 20, 0, 19))
            b.i32(s.resetVelocities) += triple(s.velocity) + historyBytes(s.history);
        b += numbers(s.transform);
        if (since(version, 25, 0, 3))
            b += triple(s.translation);
        b += centreBytes(version, s.centres, since(version, 24, 0, 29));
    }
    if (since(version, 20, 0, 21))
        b.f64(s.time);
    b.i32(s.rows).i8(s.deflated ? 1 : 0).i32(s.mask);
    b += packed(s.arrays, s.deflated);
    if (since(version, 21, 0, 4) && !since(version, 24, 0, 0))
        b += motionListBytes(g.motions);
    else {
        for (const SDeckMotion& motion : g.motions) {
            if (motion.kind != "Linear Rotation")
                continue;
            b += triple(motion.pointNow);
            if (since(version, 23, 1, 0))
                b += numbers(motion.vectorsNow);
        }
    }
    if (since(version, 23, 0, 0))
        b += customPropertyBytes(s.properties);
    for (const SDeckFactory& factory : g.factories)
        b += factoryStateBytes(version, factory);
    return b;
}

// ---------------------------------------------------------------- contents

/// A quarter turn about z, then a shift.
static constexpr std::array<double, 16> quarterTurn{0, -1, 0, 0.5, 1, 0, 0, 0.25, 0, 0, 1, -0.125, 0, 0, 0, 1};

static void storeForces(SDeckGroup& group)
{
    group.state.rows = group.mesh.triangles();
    std::vector<double> forces;
    for (const double force : group.mesh.forces)
        forces.push_back(-force);
    group.state.arrays.rawF64(forces);
}

static SDeckGroup sampleGroup(int index, const char* shape, const char* name, const CBytes& own, SDeckMesh mesh)
{
    SDeckGroup g;
    g.index = index;
    g.shape = QString::fromLatin1(shape);
    g.name = QString::fromUtf8(name);
    g.own = own;
    g.uniqueId = 40 + index;
    g.mesh = std::move(mesh);
    g.state.time = 0.625 + index;
    storeForces(g);
    return g;
}

static void letMove(SDeckGroup& g)
{
    g.isStatic = 0;
    g.transform = quarterTurn;
    g.translation = {0.5, 0.25, -0.125};
    g.history = {{1, 2, 3, 4, 5, 6}};
    g.motions = {deckTurn(), deckSlide(), deckShake(), deckSwing()}; // by their start times
    g.state.isStatic = 0;
    g.state.history = {{6, 5, 4, 3, 2, 1}, {0.5, 0.25, 0.125, 1.5, 2.5, 3.5}};
    g.state.transform = quarterTurn;
    g.state.transform[3] = 1.5;
    g.state.translation = {1.5, 0.25, -0.125};
    g.state.centres = {{{9, 8, 7}, {6, 5, 4}, {3, 2, 1}, {0.5, 0.75, 0.25}}};
}

std::vector<SDeckGroup> sampleGroups()
{
    SDeckGroup box = sampleGroup(0, "box", "Trichter", boxBytes(), tetrahedron(0, 3.0));
    letMove(box);
    box.factories = {deckFactory("A", "Ball"), deckFactory("B", "Oval (größer)")};
    box.factories[1].kind = "static";
    SDeckGroup cylinder = sampleGroup(1, "cylinder", "Drum", cylinderBytes(), tetrahedron(4, 1.0));
    cylinder.closed = 0;
    cylinder.isReal = 0;
    SDeckGroup polygon = sampleGroup(2, "polygon", "Plate", polygonBytes(), strip(8, 60));
    polygon.mesh.deflated = true;
    polygon.closed = 0;
    polygon.state.deflated = true;
    SDeckGroup cad = sampleGroup(3, cadShape, "Blade", cadBytes(), tetrahedron(70, 2.0));
    cad.mesh.imported = {0, 0, 0, 0, 1, 0, 0, 0, 1, 1, 0, 0};
    letMove(cad);
    return {box, cylinder, polygon, cad};
}

} // namespace NBrenmark
