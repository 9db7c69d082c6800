// Builds the tree and walks it. Points that no split parts, which a file can hold, stay in one leaf.
#include "analysis/field_search_tree.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

namespace NBrenmark::NField {

/// A cloud made to be deep, each mean parting a point or two from the rest, must not cost the stack.
static constexpr int greatestDepth = 2000;

CFieldSearchTree::CFieldSearchTree(const std::vector<CNdData>& points) : points(points), indices(points.size())
{
    dimensions = points.empty() ? 0 : points.front().size();
    std::iota(indices.begin(), indices.end(), 0);
    if (dimensions <= mostDimensions)
        rootNode = buildNode(0, static_cast<qint32>(indices.size()) - 1, nullptr, 0);
}

// ---------------------------------------------------------------- building

SFieldNode::SRange CFieldSearchTree::scan(qint32 first, qint32 last, quint32 axis) const
{
    SFieldNode::SRange range{coordinate(first, axis), coordinate(first, axis)};
    for (qint32 i = first + 1; i <= last; ++i) {
        range.least = std::min(range.least, coordinate(i, axis));
        range.greatest = std::max(range.greatest, coordinate(i, axis));
    }
    return range;
}

/// Moves the points at or below the mean in front of the others. \return the place of the last of them
qint32 CFieldSearchTree::partition(qint32 first, qint32 last, quint32 axis, double mean)
{
    qint32 lower = first;
    qint32 upper = last;
    while (lower < upper) {
        if (coordinate(lower, axis) <= mean)
            ++lower;
        else
            std::swap(indices[lower], indices[upper--]);
    }
    return coordinate(lower, axis) <= mean ? lower : lower - 1;
}

std::unique_ptr<SFieldNode> CFieldSearchTree::buildNode(qint32 first, qint32 last, const SFieldNode* parent, int depth)
{
    if (last < first)
        return nullptr;
    auto node = std::make_unique<SFieldNode>();
    node->first = first;
    node->last = last;
    const bool isSmall = last - first < leafSize;
    for (quint32 axis = 0; axis < dimensions; ++axis) {
        const bool isParents = !isSmall && parent != nullptr && parent->splitDimension != axis;
        node->bounds[axis] = isParents ? parent->bounds[axis] : scan(first, last, axis);
    }
    if (isSmall || depth == greatestDepth)
        return node;

    double widest = 0.0;
    for (quint32 axis = 0; axis < dimensions; ++axis) {
        const double width = node->bounds[axis].greatest - node->bounds[axis].least;
        if (width > widest) {
            widest = width;
            node->splitDimension = axis;
        }
    }
    if (!(widest > 0.0)) // all points coincide, or a coordinate is no number
        return node;

    const quint32 axis = node->splitDimension;
    double sum = 0.0;
    for (qint32 i = first; i <= last; ++i)
        sum += coordinate(i, axis);
    node->split = sum / (last - first + 1);
    const qint32 middle = partition(first, last, axis, node->split);
    const bool isUnparted = middle < first || middle == last;
    if (isUnparted && parent != nullptr && parent->splitDimension != axis) {
        // The parent's bounds are wider than these points, which all lie on one side: the only child scans the axis.
        node->left = buildNode(first, last, node.get(), depth + 1);
        node->bounds = node->left->bounds;
        node->split = node->lowerBound = node->upperBound = node->bounds[axis].greatest;
        return node;
    }
    if (isUnparted) {
        // The mean of numbers next to each other is rounded to one of them, that of huge ones is infinite: nothing
        // is parted, and would not be on the next level either.
        node->split = 0.0;
        node->splitDimension = 0;
        for (quint32 a = 0; a < dimensions; ++a)
            node->bounds[a] = scan(first, last, a);
        return node;
    }
    node->left = buildNode(first, middle, node.get(), depth + 1);
    node->right = buildNode(middle + 1, last, node.get(), depth + 1);
    node->lowerBound = node->right->bounds[axis].least;
    node->upperBound = node->left->bounds[axis].greatest;
    node->split = (node->lowerBound + node->upperBound) * 0.5;
    for (quint32 a = 0; a < dimensions; ++a)
        node->bounds[a] = {std::min(node->left->bounds[a].least, node->right->bounds[a].least),
                           std::max(node->left->bounds[a].greatest, node->right->bounds[a].greatest)};
    return node;
}

// ---------------------------------------------------------------- searching

namespace {

bool isNearer(const SFieldNeighbour& a, const SFieldNeighbour& b)
{
    return a.distance != b.distance ? a.distance < b.distance : a.point < b.point;
}

/// A walk through the tree that keeps the nearest points in a heap, farthest on top.
class CNearestSearch
{
public:
    CNearestSearch(const std::vector<CNdData>& points, const std::vector<qint32>& indices, quint32 dimensions,
                   const CNdData& place, size_t wanted, std::vector<SFieldNeighbour>& found)
        : points(points), indices(indices), dimensions(dimensions), place(place), wanted(wanted), found(found)
    {}

    void walk(const SFieldNode& node)
    {
        if (node.isLeaf()) {
            for (qint32 i = node.first; i <= node.last; ++i)
                take(static_cast<quint32>(indices[i]));
            return;
        }
        const SFieldNode* near = node.left.get();
        const SFieldNode* far = node.right.get();
        if (place[node.splitDimension] > node.split)
            std::swap(near, far);
        for (const SFieldNode* child : {near, far})
            // "Not beyond" instead of "within": a node whose bounds are no numbers is looked into.
            if (child != nullptr && (found.size() < wanted || !(distanceTo(*child) > found.front().distance)))
                walk(*child);
    }

private:
    void take(quint32 point)
    {
        double sum = 0.0;
        for (quint32 axis = 0; axis < dimensions; ++axis) {
            const double apart = points[point][axis] - place[axis];
            sum += apart * apart;
        }
        const SFieldNeighbour candidate{std::sqrt(sum), point};
        if (std::isnan(candidate.distance))
            return;
        if (found.size() == wanted) {
            if (!isNearer(candidate, found.front()))
                return;
            std::pop_heap(found.begin(), found.end(), isNearer);
            found.pop_back();
        }
        found.push_back(candidate);
        std::push_heap(found.begin(), found.end(), isNearer);
    }

    /// From the place to the node's box; rounded downward, so that no point on its edge is missed.
    double distanceTo(const SFieldNode& node) const
    {
        double sum = 0.0;
        for (quint32 axis = 0; axis < dimensions; ++axis) {
            const SFieldNode::SRange& range = node.bounds[axis];
            const double apart = std::max({range.least - place[axis], place[axis] - range.greatest, 0.0});
            sum += apart * apart;
        }
        return std::sqrt(sum) * (1.0 - 1e-14);
    }

    const std::vector<CNdData>& points;
    const std::vector<qint32>& indices;
    const quint32 dimensions;
    const CNdData& place;
    const size_t wanted;
    std::vector<SFieldNeighbour>& found;
};

} // namespace

void CFieldSearchTree::nearest(const CNdData& place, quint32 count, std::vector<SFieldNeighbour>& neighbours) const
{
    neighbours.clear();
    if (rootNode == nullptr || count == 0)
        return;
    CNearestSearch search(points, indices, dimensions, place, count, neighbours);
    search.walk(*rootNode);
    std::sort_heap(neighbours.begin(), neighbours.end(), isNearer);
}

} // namespace NBrenmark::NField
