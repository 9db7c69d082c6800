#include "support/settings_entries.h"

namespace NBrenmark {

// Versions as plain numbers, major << 16 | minor << 8 | build.

static CBytes chartBytes(quint32 version)
{
    CBytes b;
    b.f64(0.25).f64(0.75).i32(5).text("chart");
    if (version >= 0x180020) { // 24.0.32: a QColor is its kind, then five words: alpha, red, green, blue, nothing
        b.i8(1);
        b.u32(0xFFFF1010u).u32(0x20203030u).i8(0).i8(0);
    }
    if (version >= 0x1E0003)
        b.i32(6);
    b.i32(7).i8(1).i8(1);
    if (version >= 0x170003)
        b.i32(4).i8(1);
    if (version >= 0x1E0002)
        b.i8(1);
    return b.f64s({1, 2, 3});
}

static CBytes scaleBytes(quint32 version)
{
    CBytes b;
    b.f64(-2).f64(8).i8(1).i8(1);
    const int colours = version >= 0x1E0002 ? 9 : 3;
    for (int i = 0; i < colours; ++i)
        b.f64s({0.1 * i, 0.5, 1 - 0.1 * i});
    if (version == 0x1E0002)
        b.i32(6);
    return b.f64s({0.4, 0.5, 0.6}) += chartBytes(version);
}

CBytes fieldDisplayBytes(quint32 version)
{
    CBytes b;
    b.i8(1).i32(10).i32(20).i32(30).f64(0.5).i8(1).i32(2);
    b += scaleBytes(version);
    b.f64(1.5).i8(1).f64(3).f64(10).i32(3).i8(1).f64(2.5).i8(1).f64(-1).f64(1);
    return b.i32(11).i32(12).i32(13).f64(0.125).i32(4).i32(5).i32(6).i32(7).i32(8);
}

CBytes vectorBytes(const std::vector<double>& components)
{
    CBytes b;
    b.i32(static_cast<qint32>(components.size()));
    for (const double component : components)
        b.f64(component);
    return b;
}

CBytes fieldBytes(quint32 version, const QString& name, qint32 id, qint32 plane, const SampleVectors& points,
                  const SampleVectors& values)
{
    CBytes b;
    b.text(name).i32(id).i32(plane);
    for (const SampleVectors* vectors : {&points, &values}) {
        b.i32(static_cast<qint32>(vectors->size()));
        for (const std::vector<double>& vector : *vectors)
            b += vectorBytes(vector);
    }
    return b += fieldDisplayBytes(version);
}

CBytes queryBytes(const QString& primaryAttribute)
{
    CBytes b;
    b.f64s({1, 2, 3, 4, 5, 6});
    for (const QString& text :
         {primaryAttribute, QString("Force"), QString("X"), QString("Y"), QString("Walls"), QString("Ball")})
        b.text(text);
    return b.i32(7).i32(8).i32(9).i8(1).i8(0).i8(1).i8(1).f64s({1, 2, 3}).f64s({4, 5, 6});
}

CBytes queryMapBytes(const std::vector<std::pair<QString, std::vector<CBytes>>>& sections)
{
    CBytes b;
    b.i32(static_cast<qint32>(sections.size()));
    for (const auto& [name, queries] : sections) {
        b.text(name).i32(static_cast<qint32>(queries.size()));
        for (const CBytes& query : queries)
            b += query;
    }
    return b;
}

CBytes displayBytes()
{
    CBytes b;
    b.i8(1).u32(0xFFFF1010u).u32(0x20203030u).i8(0).i8(0);
    b.i8(0).f64(0.25).i32(3).text("Velocity").text("X").i8(1).i8(1).i8(0).i8(1).i8(0).i8(1);
    b.text("Normal Force").text("Torque").f64(0.001).text("All").text("Sphere").i8(1).text("steel.png");
    return b += scaleBytes(0x1E0014);
}

CBytes filterListBytes()
{
    CBytes b;
    b.i32(1).text("Type Filter").i32(1).i32(2).i32(3).i32(4).i32(5);
    for (int list = 0; list < 6; ++list)
        b.i32(2).i32(10 * list).i32(10 * list - 7);
    return b;
}

CBytes selectionHead(const QString& typeId, const QString& name)
{
    return CBytes().text(typeId).text(name).text(name).i8(1);
}

CBytes selectionBase(const CBytes& queries) { return displayBytes() + displayBytes() + filterListBytes() + queries; }

CBytes colourBytes(quint32 version)
{
    CBytes b;
    if (version >= 0x1B0000)
        b.i32(200).i32(100).i32(50);
    if (version >= 0x1E000E)
        b.f64(0.375);
    return b;
}

CBytes regionBytes()
{
    CBytes b;
    return b.i8(0).text("hopper").text("start").text("end").ascii("abc").i32(12).text("bin.stl").f64(0.5).f64(1.5);
}

} // namespace NBrenmark
