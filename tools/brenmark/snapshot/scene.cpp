#include "brenmark/snapshot/scene.h"

#include "brenmark/plot_axis.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace NBrenmark {

using Axes = std::array<std::array<double, 3>, 3>;

/// Room beside the picture for the legend, and around it, pixels.
static constexpr double legendWidth = 150, margin = 40, titleHeight = 40;
/// Edges are cut into pieces, each with a depth of its own.
static constexpr int edgePieces = 24;
/// Triangles whose normals differ by less are one flat wall: the edge between them isn't shown.
static constexpr double flatCosine = 0.999;

SColour colourOf(double share)
{
    if (!std::isfinite(share))
        return {170, 170, 170};
    // Viridis at five places. Source: van der Walt, Smith, matplotlib colormaps (2015).
    static constexpr int stops[5][3] = {{68, 1, 84}, {59, 82, 139}, {33, 145, 140}, {94, 201, 98}, {253, 231, 37}};
    const double at = std::clamp(share, 0.0, 1.0) * 4;
    const int from = std::min(static_cast<int>(at), 3);
    const auto mixed = [&](int channel) {
        return static_cast<int>(
            std::lround(stops[from][channel] + (at - from) * (stops[from + 1][channel] - stops[from][channel])));
    };
    return {mixed(0), mixed(1), mixed(2)};
}

bool viewAxes(const std::string& view, Axes& axes)
{
    if (view == "x")
        axes = {{{0, 1, 0}, {0, 0, 1}, {1, 0, 0}}};
    else if (view == "y")
        axes = {{{1, 0, 0}, {0, 0, 1}, {0, -1, 0}}};
    else if (view == "z")
        axes = {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};
    else if (view == "iso") {
        const double turn = 0.5, lift = 0.45; // rad: about the vertical, and above the horizon
        axes[0] = {std::cos(turn), std::sin(turn), 0.0};
        axes[2] = {std::sin(turn) * std::cos(lift), -std::cos(turn) * std::cos(lift), std::sin(lift)};
        axes[1] = {-std::sin(turn) * std::sin(lift), std::cos(turn) * std::sin(lift), std::cos(lift)};
    }
    else
        return false;
    return true;
}

static double along(const std::array<double, 3>& axis, const double* point)
{
    return axis[0] * point[0] + axis[1] * point[1] + axis[2] * point[2];
}

static const SPieceArray* arrayNamed(const SPiece& piece, const std::string& name)
{
    const auto found = std::find_if(piece.arrays.begin(), piece.arrays.end(),
                                    [&](const SPieceArray& one) { return one.name == name; });
    return found == piece.arrays.end() ? nullptr : &*found;
}

// ---------------------------------------------------------------- marks, in metres

static void addParticles(SScene& scene, const SPiece& piece, const std::string& attribute, const Axes& axes,
                         quint32 timestep, CLeftOut& leftOut)
{
    const SPieceArray* const values = arrayNamed(piece, attribute);
    const SPieceArray* const diameters = arrayNamed(piece, "Diameter");
    scene.least = HUGE_VAL;
    scene.greatest = -HUGE_VAL;
    for (std::size_t i = 0; values != nullptr && i < piece.rows(); ++i)
        if (std::isfinite(values->values[i])) {
            scene.least = std::min(scene.least, values->values[i]);
            scene.greatest = std::max(scene.greatest, values->values[i]);
        }
    const double range = scene.greatest - scene.least;
    for (std::size_t i = 0; i < piece.rows(); ++i) {
        const double* const point = &piece.points[3 * i];
        const double radius = diameters == nullptr ? 0.0 : diameters->values[i] / 2.0;
        if (!std::isfinite(point[0] + point[1] + point[2]) || !std::isfinite(radius)) {
            leftOut.add("particles whose place or size isn't a number", timestep);
            continue;
        }
        SMark mark;
        mark.x = along(axes[0], point);
        mark.y = along(axes[1], point);
        mark.depth = along(axes[2], point);
        mark.radius = radius;
        const double value = values == nullptr ? NAN : values->values[i];
        mark.colour = colourOf(range > 0.0 ? (value - scene.least) / range : value - value);
        scene.marks.push_back(mark);
    }
}

using Corner = std::array<double, 3>;

/// Edges of a wall but for those within a flat part of it, by their ends.
static std::vector<std::pair<Corner, Corner>> wallEdges(const SPiece& piece)
{
    // By the places of corners, not their numbers: meshes often have a corner twice. Each group by itself: two walls may
    // be in one place.
    using Edge = std::pair<Corner, Corner>;
    std::map<std::pair<qint32, Edge>, std::vector<Corner>> normals;
    for (std::size_t i = 0; i + 2 < piece.triangles.size(); i += 3) {
        std::array<Corner, 3> at;
        for (std::size_t k = 0; k < 3; ++k)
            std::copy_n(&piece.points[3 * std::size_t(piece.triangles[i + k])], 3, at[k].begin());
        Corner a, b;
        for (std::size_t k = 0; k < 3; ++k) {
            a[k] = at[1][k] - at[0][k];
            b[k] = at[2][k] - at[0][k];
        }
        Corner normal{a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
        const double length = std::sqrt(along(normal, normal.data()));
        for (double& part : normal)
            part /= length;
        if (!std::isfinite(normal[0] + normal[1] + normal[2]))
            continue; // without an area, or without a place
        for (std::size_t k = 0; k < 3; ++k)
            normals[{piece.owners[i / 3], Edge(std::minmax(at[k], at[(k + 1) % 3]))}].push_back(normal);
    }
    std::vector<Edge> edges;
    for (const auto& [place, around] : normals)
        if (around.size() != 2 || std::abs(along(around[0], around[1].data())) < flatCosine)
            edges.push_back(place.second);
    return edges;
}

static void addWalls(SScene& scene, const SPiece& piece, const Axes& axes)
{
    for (const auto& [from, to] : wallEdges(piece))
        for (int i = 0; i < edgePieces; ++i) {
            Corner begin, end;
            for (std::size_t k = 0; k < 3; ++k) {
                begin[k] = from[k] + (to[k] - from[k]) * i / edgePieces;
                end[k] = from[k] + (to[k] - from[k]) * (i + 1) / edgePieces;
            }
            SMark mark;
            mark.isDisc = false;
            mark.colour = {90, 90, 90};
            mark.x = along(axes[0], begin.data());
            mark.y = along(axes[1], begin.data());
            mark.toX = along(axes[0], end.data());
            mark.toY = along(axes[1], end.data());
            mark.depth = (along(axes[2], begin.data()) + along(axes[2], end.data())) / 2.0;
            scene.marks.push_back(mark);
        }
}

// ---------------------------------------------------------------- from metres to pixels

static void fitToPage(SScene& scene)
{
    double left = HUGE_VAL, right = -HUGE_VAL, low = HUGE_VAL, high = -HUGE_VAL;
    const auto reach = [&](double x, double y, double radius) {
        left = std::min(left, x - radius);
        right = std::max(right, x + radius);
        low = std::min(low, y - radius);
        high = std::max(high, y + radius);
    };
    for (const SMark& mark : scene.marks) {
        reach(mark.x, mark.y, mark.radius);
        if (!mark.isDisc)
            reach(mark.toX, mark.toY, 0.0);
    }
    const double wide = scene.width - 2 * margin - legendWidth, tall = scene.height - 2 * margin - titleHeight;
    const double size = std::max({(right - left) / wide, (high - low) / tall, 1e-300});
    const auto toX = [&](double x) { return margin + wide / 2 + (x - (left + right) / 2) / size; };
    const auto toY = [&](double y) { return margin + titleHeight + tall / 2 - (y - (low + high) / 2) / size; };
    for (SMark& mark : scene.marks) {
        mark.x = toX(mark.x);
        mark.y = toY(mark.y);
        mark.toX = toX(mark.toX);
        mark.toY = toY(mark.toY);
        mark.radius = std::max(mark.radius / size, 0.7); // never invisible
    }
}

SScene sceneOf(const std::vector<SPiece>& pieces, const std::string& attribute, const Axes& axes, quint32 timestep,
               CLeftOut& leftOut)
{
    SScene scene;
    for (const SPiece& piece : pieces) {
        if (piece.kind == "geometry")
            addWalls(scene, piece, axes);
        if (piece.kind != "particles")
            continue;
        addParticles(scene, piece, attribute, axes, timestep, leftOut);
        if (const SPieceArray* const values = arrayNamed(piece, attribute))
            scene.legend = withUnit(values->name, values->unit);
    }
    fitToPage(scene);
    std::stable_sort(scene.marks.begin(), scene.marks.end(),
                     [](const SMark& a, const SMark& b) { return a.depth < b.depth; });
    return scene;
}

} // namespace NBrenmark
