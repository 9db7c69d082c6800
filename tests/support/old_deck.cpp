#include "support/old_deck.h"

#include "support/legacy_deck_geometry.h"

#include "core/version.h"

namespace NBrenmark {

const std::vector<quint32> oldVersions = [] {
    std::vector<quint32> versions;
    for (const quint32 build :
         {1,  2,  3,  4,  5,  6,  7,  8,  9,  11, 12, 15, 16, 17, 18, 19, 20, 21, 22, 25, 27, 28, 29, 30,
          31, 32, 33, 34, 35, 36, 37, 38, 39, 40, 41, 48, 49, 50, 51, 52, 53, 54, 55, 56, 57, 58, 59})
        versions.push_back(makeVersion(2, 4, build));
    for (const quint32 build : {1, 3, 4, 5, 6, 7, 8, 9})
        versions.push_back(makeVersion(13, 0, build));
    for (const quint32 build : {0, 1, 3, 4, 5, 6, 7, 9, 10, 12, 13, 14})
        versions.push_back(makeVersion(20, 0, build));
    return versions;
}();

/// Bytes that only some versions have.
static CBytes when(bool isStored, const CBytes& bytes) { return isStored ? bytes : CBytes(); }

/// What a version stores, a line a range of versions.
class CVersionBytes
{
public:
    explicit CVersionBytes(quint32 version) : version(version) {}

    bool from(quint32 major, quint32 minor, quint32 build) const { return since(version, major, minor, build); }
    bool before(quint32 major, quint32 minor, quint32 build) const { return !from(major, minor, build); }
    /// Between the two lines a gap: what 13.0 gained is absent again.
    bool in13(quint32 build) const { return from(13, 0, build) && before(20, 0, 0); }

    CBytes axisAngle(double first) const
    {
        CBytes b = CBytes().f64s({first, first + 1, first + 2, first + 3, first + 4, first + 5});
        b += when(from(2, 4, 9) && before(2, 4, 17), CBytes().f64(-1));
        return from(2, 4, 9) ? b.f64s({-2, first + 6}) : b;
    }

    CBytes prototype(int id, double scale, const QString& name) const
    {
        CBytes b = axisAngle(10 * id) + axisAngle(20 * id);
        b.f64s({0.5 * id, 0, 0}).f64s({0, 0, 1.0 * id}).f64s({0, 1, 0, 0});
        b += when(from(2, 4, 29), axisAngle(30 * id));
        b += when(from(2, 4, 56), axisAngle(-99));
        const double s5 = scale * scale * scale * scale * scale;
        b.f64s({4, 5, 6}).f64s({s5 * 1, s5 * 2, s5 * 3});
        b.i32(1).text("key of a sphere").f64s({0, 0, 0.25 * scale}).f64s({-9, -9, -9}).i32(0);
        b.f64(0.5 * scale).i32(-9).text("head");
        b += when(from(2, 4, 3), CBytes().f64(0.375 * scale));
        b += when(from(2, 4, 41), CBytes().f64s({-9, -9, -9}));
        b.text("Glass").i32(id).f64(0.5 * scale * scale * scale).f64(1.0 * scale * scale * scale).f64(scale);
        b += when(before(2, 4, 19), CBytes().i32(-9));
        b.text(name);
        b += when(from(2, 4, 53), CBytes().f64(-9));
        b += when(in13(1), CBytes().f64(0.125 * id).f64s({-9, -9, -9}));
        return in13(5) ? b.i32(2).f64(300 + id).f64(-9) : b;
    }

    CBytes particleTypes(int rows) const
    {
        CBytes b = CBytes().i32(8138).i32(2).i32(1).i32(3141).text("Ball").text("Glass");
        b.f64s({1.0, 0.5, 1, 2, 3}).i32(1);
        b += when(from(20, 0, 4), CBytes().i32(0));
        b.text("head").f64s({0.5, 0.375, 0, 0, 0.25}).i32(rows);
        if (from(20, 0, 6))
            b.i32(3); // ids and velocities
        if (rows == 0)
            return b;
        b += when(from(20, 0, 1), CBytes().i8(0));
        b.rawI32({1, 2}).rawF64({0, 0, 1, 0, 0, 2});
        return from(20, 0, 6) ? b : b.rawF64(std::vector<double>(2 * (3 + 9 + 3 + 1 + 7 + 7 + 7), 1.0));
    }

    CBytes factory(bool isDynamic) const
    {
        CBytes b = CBytes().text(isDynamic ? "dynamic" : "static").text("Feed").i32(3);
        b += when(from(2, 4, 27), CBytes().i32(30));
        b.text("normal").f64s({1, 0});
        b += when(from(2, 4, 22), CBytes().f64s({0, 2, 0}));
        b.text("normal").f64s({1.5, 0.25});
        b += when(from(2, 4, 28), CBytes().f64s({0.5, 2}).i32(1));
        b += when(from(2, 4, 49), CBytes().i32(0));
        b.text("random").text("fixed").f64s({1, 2, 3}).text("fixed").text("Ball");
        b.text("random").i32(1).f64s({0.4, 1.25, 1.5});
        b += when(from(2, 4, 33), CBytes().f64(0.0625));
        b += when(from(2, 4, 22), CBytes().f64s({0.5, 0.25, 0.125, 0, 0, 1}));
        b += when(in13(1), CBytes().text("fixed").f64(1e-9));
        b += when(in13(7), CBytes().i32(0));
        if (!isDynamic)
            return b.i32(1).f64(0.125) += when(from(2, 4, 50), CBytes().i32(0).i32(250));
        b.i32(500).i32(0).f64s({100, 0.125});
        b += when(from(2, 4, 20) && before(2, 4, 27), CBytes().i32(40));
        return from(2, 4, 52) ? b.f64(12.5).i32(0) : b;
    }

    CBytes motions() const
    {
        const CBytes swing = motionBytes(deckSwing());
        CBytes b;
        if (before(20, 0, 0)) {
            b.i32(1) += from(2, 4, 40) ? swing : swing.from(CBytes().text(deckSwing().kind).size());
            b.i32(0);
        }
        return b += motionListBytes({deckSlide()});
    }

    CBytes oldMesh(int triangleId) const
    {
        const int id = 10 * triangleId; // of the first corner
        CBytes b = CBytes().i32(1).text("triangle") + axisAngle(100);
        b.f64s({0, 0, 3}).i32(0);
        b += when(from(2, 4, 2),
                  CBytes().i32(3).i32(id).f64s({0, 0, 0}).i32(id + 1).f64s({1, 0, 0}).i32(id + 2).f64s({0, 1, 0}));
        b.text("Glass").i32(triangleId).i32(1).i32(-9).i32(0);
        b += when(in13(1), CBytes().f64(0.25));
        b += when(version == makeVersion(13, 0, 1), CBytes().f64s({-9, -9, -9}));
        b.i32(0).text("Steel").i32(1);
        b += when(before(2, 4, 7), CBytes().text("Drum"));
        b.i32(-9).f64s({0, 0.5}).i32(1);
        b += when(from(2, 4, 4), CBytes().f64(0.625));
        b += when(from(2, 4, 12) && before(2, 4, 31), CBytes().f64(-9));
        b += when(from(2, 4, 31), CBytes().f64(0.75));
        b += when(from(2, 4, 34), CBytes().i32(0));
        b += when(from(2, 4, 59), CBytes().f64s({1, 2, 3}));
        b += when(in13(1), CBytes().i32(1).f64(2e-9));
        return in13(3) ? b.i32(0) : b;
    }

    CBytes mesh(int triangleId) const
    {
        CBytes b = CBytes().i32(3);
        b += when(from(20, 0, 3), CBytes().i32(1).i8(0));
        b += when(from(20, 0, 10), CBytes().i8(1));
        b.rawI32({10 * triangleId, 10 * triangleId + 1, 10 * triangleId + 2}).rawF64({0, 0, 0, 1, 0, 0, 0, 1, 0});
        b += when(before(20, 0, 3), CBytes().i32(1));
        b.rawI32({triangleId}).rawI32({0, 1, 2}).rawF64({100, 101, 102, 103, 104, 105, 106});
        b.i32(0).text("Steel").i32(1).i32(-9).f64s({0, 0.5, 0.625, 0.75}).i32(1).f64s({1, 2, 3}).f64s({0, 0, 3}).i32(0);
        return from(20, 0, 10) ? b.f64s({1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}) : b;
    }

    CBytes group(int index, const QString& shape, const CBytes& own) const
    {
        CBytes b = CBytes().i32(index);
        b += when(from(2, 4, 5), CBytes().text(shape) += own);
        b += motions();
        b.i32(1) += factory(index == 0);
        b.f64s({1, 1, 1, 0, 0, 0}).f64s({1, 2, 3, 4, 5, 6});
        b += when(from(2, 4, 31), CBytes().f64s({7, 8, 9}));
        b += when(from(2, 4, 7), CBytes().text(index == 0 ? "Drum" : "Plate"));
        return b += before(20, 0, 0) ? oldMesh(5 + index) : mesh(5 + index);
    }

    CBytes groups() const
    {
        CBytes cylinder = CBytes().f64s({0, 0, -0.5, 0, 0, 0.5, 0.25});
        if (from(2, 4, 15))
            cylinder.f64(0.375);
        cylinder.i32(8).i32(1).i32(0);
        CBytes polygon = CBytes().f64s({0, 1, 0});
        if (before(20, 0, 0))
            polygon.i32(-9);
        polygon.f64s({1, 2, 3});
        if (before(2, 4, 26))
            polygon.i32(-9).f64s({0, 0, 0}).i32(-9).f64s({2, 4, 6}).f64s({0.75, 0.1}).i32(5);
        else
            polygon.f64s({0.75, 0.1}).i32(5).f64s({2, 1}).f64s({0.4, 0.5, 0.6});
        return CBytes().i32(2) + group(0, "cylinder", cylinder) + group(1, "polygon", polygon);
    }

    CBytes physics() const
    {
        CBytes b;
        if (from(13, 0, 6)) {
            b.i32(1).text("Linear Cohesion");
            b += when(from(13, 0, 8), CBytes().i32(0));
            b.i32(1).text(before(20, 0, 0) ? "Ball - Ball" : "Ball");
            b += when(from(20, 0, 0), CBytes().text("Ball"));
            b.f64(0.875).i32(0);
        }
        return b.i32(0);
    }

    CBytes contacts() const
    {
        const auto pair = [this] {
            CBytes b = CBytes().f64s({1, 2, 3}).f64s({4, 5, 6}).f64s({7, 0, 0}).f64s({8, 0, 0}).f64s({9, 0, 0});
            b.f64s({0.5, 0.25, 0}).f64(0.0625);
            b += when(from(2, 4, 48), CBytes().i32(-9));
            return from(2, 4, 52) ? b.f64s({-1, -2, -3}).f64s({-4, -5, -6}) : b;
        };
        return CBytes().i32(1).i32(0).i32(2).i32(0).i32(1) + pair() + CBytes().i32(1).i32(0).i32(1).i32(5) + pair();
    }

    CBytes collisions() const
    {
        if (before(2, 4, 37))
            return CBytes().i32(1).i32(2).i32(1).i32(0);
        const auto side = [](int id) {
            return CBytes()
                .f64s({1, 0, 0})
                .f64s({0, 1, 0})
                .f64s({1, 0, 0, 0})
                .f64s({0, 0, 1})
                .i32(0)
                .i32(id)
                .text("Ball")
                .f64(0.5);
        };
        CBytes b = CBytes().i32(3).i32(1).i32(0).f64s({0.5, 0.25, 0}).f64s({1, 2, 3}).f64s({4, 5, 6}).f64s({7, 8, 9});
        b.f64s({10, 11, 12}).f64s({13, 14, 15}).f64s({16, 17, 18}).f64s({0.5, 0}).i32(6).f64s({0.25, 0.125}).i32(7);
        return b += side(2) + side(1) + CBytes().i32(0);
    }

    const quint32 version;
};

static CBytes stamp(const CVersionBytes& v)
{
    CBytes b = CBytes().u32(v.version);
    return v.from(2, 4, 51) ? b.i32(1).i32(-9) : b;
}

CBytes oldGroupBytes(quint32 version) { return CVersionBytes(version).groups(); }

CBytes oldCreatorBytes(quint32 version)
{
    const CVersionBytes v(version);
    CBytes b = stamp(v);
    b += when(v.in13(4), CBytes().i32(1));
    const CBytes domain = CBytes().f64s({-1, -1, -1, 2, 2, 2}).i32(0).i32(1).i32(0);
    b.f64s({0, 0, -9.81}) += domain;
    b += when(v.from(20, 0, 14), v.physics());
    if (v.before(20, 0, 0)) {
        b.i32(1).text("Ball");
        b += when(v.from(2, 4, 18), CBytes().i32(1));
        b += when(v.from(2, 4, 54), domain);
        b += v.prototype(0, 1.0, "Ball");
        b += when(v.from(13, 0, 3), v.physics());
    }
    else
        b += v.particleTypes(0);
    if (v.from(2, 4, 39)) {
        b.i32(2);
        for (const char* name : {"Glass", "Steel"}) {
            b.text(name).text(name).f64s({0.3, 1e7, 2500});
            b += when(v.in13(1), CBytes().f64(4.5));
        }
        b.i32(1).text("Glass~Steel").f64s({0.5, 0.25, 0.125});
    }
    b += when(v.from(20, 0, 10), v.groups());
    b.text("Title");
    b += when(v.before(2, 4, 19), CBytes().i32(2));
    b.i32(3).f64(0.25);
    b += when(v.before(2, 4, 16), CBytes().u64(1).u64(2));
    b += when(v.before(2, 4, 19), CBytes().f64s({-9, -9}));
    b += when(v.from(2, 4, 8), CBytes().text("Description"));
    b += when(v.in13(3) || v.from(20, 0, 13), CBytes().i32(1).f64(12.5).i32(0).f64(80));
    return b;
}

CBytes oldTimestepBytes(quint32 version)
{
    const CVersionBytes v(version);
    CBytes b = stamp(v);
    if (v.from(20, 0, 10)) {
        b.i32(0);
        for (int group = 0; group < 2; ++group) {
            b.i8(1);
            b += when(v.from(20, 0, 12), CBytes().i32(4).f64s({0.1, 0.2, 0.3, 0, 1, 0}).i32(group == 0 ? 5 : 0));
        }
    }
    else
        b += v.groups();
    if (v.before(20, 0, 0)) {
        b += when(v.from(2, 4, 19), CBytes().i32(-9));
        b.i32(2) += v.prototype(1, 1.0, "Ball") + v.prototype(2, 2.0, "Ball") + v.contacts();
    }
    else {
        b += v.particleTypes(2);
        b += when(v.from(20, 0, 2), CBytes().i32(-9).i32(0).i8(0) +=
                                    v.from(20, 0, 6) ? CBytes().i32(255).i32(0).i8(0).i32(255) : CBytes().i32(0).i8(0));
    }
    b += when(v.before(20, 0, 7), v.collisions());
    b += when(v.from(2, 4, 41) && v.before(2, 4, 57), v.contacts());
    b +=
        when(v.in13(9),
             CBytes().i32(1).i32(0).i32(2).i32(0).i32(1).f64s({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}).i32(1).f64(0.5));
    b += when(v.from(2, 4, 1), CBytes().i32(0));
    b += when(v.from(2, 4, 30) && v.before(2, 4, 32), CBytes().f64s({1, 2, 3, 4, 5, 6}));
    b.f64s({0.25, 99}).i32(3).text("17/03/18");
    if (v.before(2, 4, 32)) {
        b.f64(8);
        b += when(v.from(2, 4, 30), CBytes().f64s({9, 10}));
    }
    else {
        b.f64s({1, 2, 3, 4, 5, 6});
        b += when(v.from(2, 4, 55), CBytes().f64(7));
        b.f64s({8, 9, 10});
    }
    b += when(v.from(2, 4, 36) && v.before(2, 4, 38), CBytes().i32(-9));
    return v.from(2, 4, 38) ? b.i32(1).text("Ball").i32(2) : b;
}

QString writeOldDeck(quint32 version, const QString& folder, const QString& name)
{
    const CVersionBytes v(version);
    CBytes deck = CBytes().u32(version);
    deck += when(v.from(2, 4, 58), CBytes().u32(version));
    deck += CBytes().i32(2) + when(v.from(2, 4, 16), CBytes().u32(0).u32(0).u32(0).u32(0));
    deck += when(v.from(2, 4, 35), CBytes().u32(1));
    const auto creatorAt = static_cast<quint32>(deck.size());
    deck += CBytes().text("class CGenericData") + oldCreatorBytes(version);
    CBytes index = CBytes().i32(2);
    for (int timestep = 0; timestep < 2; ++timestep) {
        index.f64(0.25).u32(0).u32(static_cast<quint32>(deck.size()));
        deck += CBytes().text("class CTimestepData").u32(0).u32(creatorAt) + oldTimestepBytes(version);
    }
    const QString path = folder + '/' + name + ".dem";
    deck.toFile(path);
    index.toFile(folder + '/' + name + ".idx");
    return path;
}

} // namespace NBrenmark
