// Fields: the record in every version, what makes one valid, the tree against a plain scan, and the interpolation
// against its formula.

#include "analysis/entry_stream.h"
#include "analysis/field_interpolation.h"
#include "analysis/field_manager.h"
#include "core/log.h"
#include "support/log_capture.h"
#include "support/settings_entries.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

namespace NBrenmark::NField {
namespace {

const SampleVectors threePoints = {{0, 0, 0}, {1, 2, 3}, {-4, 5, 0.5}};
const SampleVectors threeValues = {{3, 4}, {0, 1}, {-6, 8}};

std::unique_ptr<CFieldData> field(const std::string& name, qint32 id)
{
    auto made = std::make_unique<CFieldData>();
    made->name = name;
    made->id = id;
    made->setSamples({CNdData{1, 2, 3}}, {CNdData{4}});
    return made;
}

// ---------------------------------------------------------------- the record

TEST(Field, isReadInTheLayoutOfEveryVersionAndWrittenInOne)
{
    for (const quint32 version :
         {makeVersion(20, 0, 5), makeVersion(23, 0, 2), makeVersion(23, 0, 3), makeVersion(24, 0, 31),
          makeVersion(24, 0, 32), makeVersion(30, 0, 1), makeVersion(30, 0, 2), makeVersion(30, 0, 3), current}) {
        const std::string name = versionText(version).toStdString();
        SSource source(fieldBytes(version, "air flow", 3, eNoPlane, threePoints, threeValues) + CBytes::garbage(64),
                       version);
        CFieldData read;
        ASSERT_TRUE(read.read(source.stream, nullptr)) << name;
        EXPECT_EQ(source.buffer.bytesAvailable(), 64) << name;

        const CColour& scale = read.displayOptions.scale;
        EXPECT_EQ(scale.chart.digits, version >= makeVersion(23, 0, 3) ? 4 : 2) << name;
        EXPECT_EQ(scale.chart.useDecimal, version >= makeVersion(23, 0, 3)) << name;
        EXPECT_EQ(scale.chart.textColour.red(), version >= makeVersion(24, 0, 32) ? 0x10 : 0) << name;
        EXPECT_EQ(scale.chart.levels, version >= makeVersion(30, 0, 2) ? 6 : 0) << name;
        EXPECT_EQ(scale.chart.smooth, version >= makeVersion(30, 0, 2)) << name;
        EXPECT_EQ(scale.chart.startPoint, C3DPoint(1, 2, 3)) << name;
        EXPECT_EQ(read.displayOptions.integers[9], 8) << name;
        // Three colours become the ends and the middle of nine.
        const bool hasNine = version >= makeVersion(30, 0, 2);
        EXPECT_EQ(scale.colours[4], C3DPoint(hasNine ? 0.4 : 0.1, 0.5, hasNine ? 0.6 : 0.9)) << name;
        EXPECT_EQ(scale.colours[8], C3DPoint(hasNine ? 0.8 : 0.2, 0.5, hasNine ? 0.2 : 0.8)) << name;
        EXPECT_EQ(scale.colours[2], C3DPoint(hasNine ? 0.2 : 0.05, 0.5, hasNine ? 0.8 : 0.95)) << name;

        if (version == current) {
            EXPECT_EQ(written(read), fieldBytes(version, "air flow", 3, eNoPlane, threePoints, threeValues));
        }
        else {
            EXPECT_EQ(written(read).size(), fieldBytes(current, "air flow", 3, 3, threePoints, threeValues).size());
        }
    }
}

TEST(Field, takesAFlagForTrueOnlyIfItIsOne)
{
    CBytes bytes = fieldDisplayBytes(current);
    bytes = bytes.with(0, CBytes().i8(2));
    SSource source(bytes);
    CFieldDisplayOptions options;
    ASSERT_TRUE(options.read(source.stream, nullptr));
    EXPECT_FALSE(options.flags[0]);
    EXPECT_TRUE(options.flags[1]);
}

TEST(Field, knowsItsBoundsAndMagnitudes)
{
    SSource source(fieldBytes(current, "f", 0, ePlaneYZ, {{1, 2}, {-3, 5}}, threeValues));
    CFieldData uneven;
    EXPECT_FALSE(uneven.read(source.stream, nullptr)) << "two points and three values are no field";
    EXPECT_TRUE(uneven.positions().empty() && uneven.values().empty());

    CFieldData f;
    f.setSamples({CNdData{1, 2}, CNdData{-3, 5}}, {CNdData{3, 4}, CNdData{-6, 8}});
    EXPECT_EQ(f.positionBounds.lower, C3DPoint(-3, 2, 0));
    EXPECT_EQ(f.positionBounds.upper, C3DPoint(1, 5, 0));
    EXPECT_EQ(f.valueBounds.lower, C3DPoint(-6, 4, 0));
    EXPECT_EQ(f.valueBounds.upper, C3DPoint(3, 8, 0));
    EXPECT_EQ(f.minimumMagnitude, 5);
    EXPECT_EQ(f.maximumMagnitude, 10);
    EXPECT_EQ(f.getValueDimension(), 2u);

    CNdData v{7, 8};
    EXPECT_EQ(v[2], 7) << "past the end stands the first";
    v[5] = 1;
    EXPECT_EQ(v[0], 1);
}

struct SPlaneCase
{
    qint32 stored;
    qint32 read;
    std::vector<double> point;
};

TEST(Field, bringsItsPlaneInLineWithItsPoints)
{
    const SPlaneCase cases[] = {
        {3, 0, {1, 2}}, {2, 2, {1, 2}}, {1, 3, {1, 2, 3}}, {3, 3, {1, 2, 3}}, {2, 2, {1}},
    };
    for (const SPlaneCase& c : cases) {
        SSource source(fieldBytes(current, "f", 1, c.stored, {c.point}, {{1}}));
        CFieldData f;
        EXPECT_TRUE(f.read(source.stream, nullptr));
        EXPECT_EQ(f.plane, c.read) << c.stored << " with " << c.point.size();
    }
    SSource source(fieldBytes(current, "f", 1, 2, {}, {}));
    CFieldData f;
    EXPECT_FALSE(f.read(source.stream, nullptr));
    EXPECT_EQ(f.plane, 2);
}

TEST(Field, ofEveryLengthEndsCleanly)
{
    const CBytes whole = CBytes().i32(1) + fieldBytes(current, "f", 0, 3, threePoints, threeValues);
    for (qint64 length = 0; length < whole.size(); ++length) {
        SSource source(whole.first(length));
        CFieldManager manager;
        EXPECT_THROW(manager.read(source.stream, nullptr), std::exception) << length;
    }
    for (const qint64 at : {0, 18, 22}) { // fields, points, components
        SSource source(whole.with(at, CBytes().i32(0x7FFFFFF0)));
        CFieldManager manager;
        EXPECT_THROW(manager.read(source.stream, nullptr), std::exception) << at;
    }
}

// The second of two fields has a count that nothing can hold: the first stays, and the loss is reported by name.
TEST(Field, aBadCountKeepsTheFieldsAheadOfIt)
{
    const CBytes block =
        CBytes().i32(2) + fieldBytes(current, "a", 0, 3, threePoints, threeValues) +
        fieldBytes(current, "b", 1, 3, threePoints, threeValues).with(4 + 2 + 2 * 4, CBytes().i32(0x7FFFFFF0));
    SSource source(block);
    source.stream.setLimit(block.size());
    CPersistentLogger log(eWarning);
    addLogModule(&log);
    CFieldManager manager;
    EXPECT_TRUE(manager.read(source.stream, nullptr));
    clearLogModules();
    EXPECT_EQ(manager.fields().size(), 1u);
    EXPECT_EQ(source.buffer.bytesAvailable(), 0);
    ASSERT_EQ(log.records().size(), 1u);
    EXPECT_EQ(log.records()[0].effect, eLost);
    EXPECT_EQ(log.records()[0].place.object, "b");
}

// ---------------------------------------------------------------- the manager

TEST(FieldManager, numbersAndRefuses)
{
    CFieldManager manager;
    std::vector<std::string> heard;
    QObject::connect(&manager, &CFieldManager::fieldAdded, [&](const std::string& n) { heard.push_back("+" + n); });
    QObject::connect(&manager, &CFieldManager::fieldDeleted, [&](const std::string& n) { heard.push_back("-" + n); });
    QObject::connect(&manager, &CFieldManager::fieldRenamed,
                     [&](const std::string& a, const std::string& b) { heard.push_back(a + ">" + b); });
    QObject::connect(&manager, &CFieldManager::cleared, [&] { heard.emplace_back("0"); });
    const auto add = [&](const char* name, qint32 id) {
        auto made = field(name, id);
        const bool isIn = manager.addField(made);
        EXPECT_EQ(made == nullptr, isIn) << "who is refused stays with the caller";
        return isIn;
    };
    EXPECT_TRUE(add("a", -1));
    EXPECT_TRUE(add("b", 7));
    EXPECT_TRUE(add("c", -2));
    EXPECT_EQ(manager.getField("a")->id, 0);
    EXPECT_EQ(manager.getField("c")->id, 8);
    EXPECT_TRUE(manager.isModified());
    manager.setModified(false);
    EXPECT_FALSE(add("a", 20)) << "the name";
    EXPECT_FALSE(add("d", 7)) << "the id";
    EXPECT_FALSE(manager.isModified());
    EXPECT_TRUE(add("last", std::numeric_limits<qint32>::max()));
    EXPECT_TRUE(add("d", -1)) << "numbers that are left are given";
    EXPECT_EQ(manager.getField(9)->name, "d");

    EXPECT_TRUE(manager.renameField("b", "z"));
    EXPECT_FALSE(manager.renameField("a", "z"));
    EXPECT_EQ(manager.getField(7)->name, "z");
    EXPECT_TRUE(manager.deleteField("z"));
    EXPECT_EQ(manager.getField(7), nullptr);
    EXPECT_TRUE(manager.rebuildIdMap());
    manager.getField("a")->id = 8;
    EXPECT_FALSE(manager.rebuildIdMap());
    manager.clear(false);
    EXPECT_TRUE(add("e", -1));
    EXPECT_EQ(manager.getField("e")->id, 0);
    EXPECT_EQ(heard, (std::vector<std::string>{"+a", "+b", "+c", "+last", "+d", "b>z", "-z", "0", "+e"}));
}

TEST(FieldManager, writesValidFieldsByNameAndReportsTheOthers)
{
    CFieldManager manager;
    for (const char* name : {"b", "a"}) {
        auto made = field(name, -1);
        manager.addField(made);
    }
    auto empty = std::make_unique<CFieldData>();
    empty->name = "nothing";
    manager.addField(empty);
    CLogCapture log;
    const CBytes bytes = written(manager);
    EXPECT_NE(log.text().find("\"nothing\" isn't written: it has no points"), std::string::npos) << log.text();
    EXPECT_EQ(bytes.first(4 + 4 + 2), CBytes().i32(2).text("a"));
    EXPECT_FALSE(manager.isModified());

    SSource source(bytes);
    CFieldManager again;
    EXPECT_TRUE(again.read(source.stream, nullptr));
    EXPECT_FALSE(again.isModified());
    EXPECT_EQ(written(again), bytes);
}

TEST(FieldManager, keepsWhatStoodBeforeAFieldThatIsNone)
{
    const auto block = [](const CBytes& second) {
        return CBytes().i32(3) + fieldBytes(current, "a", 0, 3, threePoints, threeValues) + second +
               fieldBytes(current, "c", 2, 3, threePoints, threeValues);
    };
    const CBytes seconds[] = {
        fieldBytes(current, "a", 1, 3, threePoints, threeValues), // the name
        fieldBytes(current, "b", 0, 3, threePoints, threeValues), // the id
        fieldBytes(current, "b", -1, 3, threePoints, threeValues),
        fieldBytes(current, "", 1, 3, threePoints, threeValues),
        fieldBytes(current, "b", 1, 3, {}, {}),
    };
    for (const CBytes& second : seconds) {
        const CBytes bytes = block(second);
        SSource source(bytes + CBytes::garbage(10));
        source.stream.setLimit(bytes.size());
        CFieldManager manager;
        CLogCapture log;
        EXPECT_TRUE(manager.read(source.stream, nullptr));
        EXPECT_EQ(manager.fields().size(), 1u);
        EXPECT_NE(manager.getField("a"), nullptr);
        EXPECT_EQ(source.buffer.bytesAvailable(), 10);
        EXPECT_NE(log.text().find("field 2 of 3"), std::string::npos) << log.text();
    }
}

// ---------------------------------------------------------------- the tree

/// Checks a node and all below it: ranges that follow each other, boxes that are tight, small leaves.
void expectSound(const CFieldSearchTree& tree, const SFieldNode& node, const std::vector<CNdData>& points)
{
    for (quint32 axis = 0; axis < tree.dimension(); ++axis) {
        double least = std::numeric_limits<double>::infinity(), greatest = -least;
        for (qint32 i = node.first; i <= node.last; ++i) {
            least = std::min(least, points[tree.pointNumbers()[i]][axis]);
            greatest = std::max(greatest, points[tree.pointNumbers()[i]][axis]);
        }
        EXPECT_EQ(node.bounds[axis].least, least);
        EXPECT_EQ(node.bounds[axis].greatest, greatest);
    }
    if (node.isLeaf())
        return;
    ASSERT_TRUE(node.left);
    if (!node.right) { // an only child has all points
        EXPECT_EQ(node.left->last - node.left->first, node.last - node.first);
        EXPECT_EQ(node.split, node.bounds[node.splitDimension].greatest);
        return expectSound(tree, *node.left, points);
    }
    EXPECT_EQ(node.left->first, node.first);
    EXPECT_EQ(node.left->last + 1, node.right->first);
    EXPECT_EQ(node.right->last, node.last);
    const quint32 axis = node.splitDimension;
    EXPECT_EQ(node.upperBound, node.left->bounds[axis].greatest);
    EXPECT_EQ(node.lowerBound, node.right->bounds[axis].least);
    EXPECT_LT(node.upperBound, node.lowerBound);
    EXPECT_EQ(node.split, (node.upperBound + node.lowerBound) * 0.5);
    expectSound(tree, *node.left, points);
    expectSound(tree, *node.right, points);
}

TEST(FieldSearchTree, findsWhatAPlainScanFinds)
{
    std::mt19937 random(7);
    std::uniform_real_distribution<double> anywhere(-1, 1);
    std::uniform_int_distribution<int> coarse(-2, 2); // many points at one place, many at one distance
    for (const quint32 components : {1u, 2u, 3u}) {
        for (const int count : {1, 6, 7, 50, 700}) {
            for (const bool isCoarse : {false, true}) {
                const auto vector = [&] {
                    CNdData v(components);
                    for (quint32 axis = 0; axis < components; ++axis)
                        v[axis] = isCoarse ? coarse(random) : anywhere(random);
                    return v;
                };
                std::vector<CNdData> points;
                for (int i = 0; i < count; ++i)
                    points.push_back(vector());
                const CFieldSearchTree tree(points);
                expectSound(tree, *tree.root(), points);
                for (int question = 0; question < 20; ++question) {
                    const CNdData place = vector();
                    std::vector<std::pair<double, quint32>> all;
                    for (quint32 i = 0; i < points.size(); ++i) {
                        double sum = 0;
                        for (quint32 axis = 0; axis < components; ++axis)
                            sum += (points[i][axis] - place[axis]) * (points[i][axis] - place[axis]);
                        all.emplace_back(std::sqrt(sum), i);
                    }
                    std::sort(all.begin(), all.end());
                    all.resize(std::min<size_t>(all.size(), 9));
                    std::vector<SFieldNeighbour> found;
                    tree.nearest(place, 9, found);
                    ASSERT_EQ(found.size(), all.size());
                    for (size_t i = 0; i < all.size(); ++i) {
                        EXPECT_EQ(found[i].point, all[i].second);
                        EXPECT_EQ(found[i].distance, all[i].first);
                    }
                }
            }
        }
    }
}

qint32 largestLeaf(const SFieldNode* node)
{
    if (node == nullptr)
        return 0;
    return node->isLeaf() ? node->last - node->first + 1
                          : std::max(largestLeaf(node->left.get()), largestLeaf(node->right.get()));
}

// Each sheet is flat in an axis in which the cloud as a whole is wide.
TEST(FieldSearchTree, hasSmallLeavesInPerpendicularSheets)
{
    std::mt19937 random(11);
    std::uniform_real_distribution<double> anywhere(-1, 1);
    std::vector<CNdData> points;
    for (int i = 0; i < 20000; ++i)
        points.push_back(i % 2 == 0 ? CNdData{anywhere(random), anywhere(random), 0}
                                    : CNdData{0, anywhere(random), anywhere(random)});
    const CFieldSearchTree tree(points);
    expectSound(tree, *tree.root(), points);
    EXPECT_LE(largestLeaf(tree.root()), CFieldSearchTree::leafSize);
}

std::vector<CNdData> alongX(const std::vector<double>& coordinates)
{
    std::vector<CNdData> points;
    for (const double x : coordinates)
        points.push_back(CNdData{x, 0, 0});
    return points;
}

TEST(FieldSearchTree, splitsAtTheMeanWhatIsMoreThanSix)
{
    EXPECT_EQ(CFieldSearchTree(alongX({})).root(), nullptr);
    EXPECT_TRUE(CFieldSearchTree(alongX({1, 2, 3, 4, 5, 6})).root()->isLeaf());
    const std::vector<CNdData> seven = alongX({0, 1, 1, 1, 1, 1, 93}); // mean 14, median 1
    const CFieldSearchTree tree(seven);
    ASSERT_FALSE(tree.root()->isLeaf());
    EXPECT_EQ(tree.root()->left->last, 5);
    EXPECT_EQ(tree.root()->split, 47);
    EXPECT_TRUE(CFieldSearchTree(alongX(std::vector<double>(500, 2.5))).root()->isLeaf());
}

TEST(FieldSearchTree, comesToAnEndWhereTheMeanPartsNothing)
{
    const double next = std::nextafter(1.0, 2.0);
    const double huge = std::numeric_limits<double>::max();
    const double none = std::numeric_limits<double>::quiet_NaN();
    std::vector<double> powers(2000); // each mean parts a few points from all the others
    for (int i = 0; i < 2000; ++i)
        powers[i] = std::ldexp(1.0, i - 1000);
    for (const std::vector<double>& coordinates :
         {std::vector<double>{next, next, next, next, next, next, 1}, std::vector<double>{1, 1, 1, 1, 1, 1, next},
          std::vector<double>{huge, huge, huge, huge, huge, huge, -huge, 0},
          std::vector<double>{none, 1, 2, 3, 4, 5, 6, 7}, std::vector<double>{1, 2, 3, 4, 5, 6, 7, none}, powers}) {
        const std::vector<CNdData> points = alongX(coordinates);
        const CFieldSearchTree tree(points);
        std::vector<SFieldNeighbour> found;
        tree.nearest(CNdData{coordinates[1], 0, 0}, 1, found);
        ASSERT_EQ(found.size(), 1u);
        EXPECT_EQ(found[0].distance, 0);
    }
}

// ---------------------------------------------------------------- interpolation

TEST(IdwInterpolation, weighsByInverseDistance)
{
    const CIdwInterpolation idw;
    const std::vector<CNdData> values = {CNdData{1, 10}, CNdData{2, 20}, CNdData{7, 70}};
    CNdData result{99};
    EXPECT_FALSE(idw.interpolate({}, values, result));
    EXPECT_FALSE(idw.interpolate({{1, 0}}, {}, result));
    EXPECT_EQ(result[0], 99);
    // (1/1 * 1 + 1/2 * 2 + 1/4 * 7) / (1 + 1/2 + 1/4) = 3.75 / 1.75
    ASSERT_TRUE(idw.interpolate({{1, 0}, {2, 1}, {4, 2}}, values, result));
    EXPECT_EQ(result.size(), 2u);
    EXPECT_NEAR(result[0], 3.75 / 1.75, 1e-15);
    EXPECT_NEAR(result[1], 37.5 / 1.75, 1e-14);
    ASSERT_TRUE(idw.interpolate({{0.5, 0}, {0.99e-12, 2}, {1, 1}}, values, result));
    EXPECT_EQ(result[0], 7) << "nearer than 1e-12 m is the point itself";
    ASSERT_TRUE(idw.interpolate({{1.01e-12, 2}, {1, 1}}, values, result));
    EXPECT_NE(result[0], 7);
}

TEST(Field, hasAValueEverywhere)
{
    CFieldData f;
    std::vector<SFieldNeighbour> neighbours;
    CNdData result;
    EXPECT_FALSE(f.valueAt(CNdData{0, 0, 0}, result, neighbours, 0, nullptr));
    f.setSamples(alongX({0, 1, 3}), {CNdData{5}, CNdData{7}, CNdData{100}});
    ASSERT_TRUE(f.valueAt(CNdData{0.75, 0, 0}, result, neighbours, 2, nullptr));
    EXPECT_EQ(result[0], 7);
    const CIdwInterpolation idw;
    ASSERT_TRUE(f.valueAt(CNdData{0.75, 0, 0}, result, neighbours, 2, &idw));
    EXPECT_NEAR(result[0], (5 / 0.75 + 7 / 0.25) / (1 / 0.75 + 1 / 0.25), 1e-14);
}

} // namespace
} // namespace NBrenmark::NField
