#pragma once
// A tree over the points of a field, by which the nearest of them are found. A node halves its range at the mean
// along its widest axis.

#include "analysis/nd_data.h"

#include <array>
#include <memory>
#include <vector>

namespace NBrenmark::NField {

/// A node, of the points indices[first] to indices[last].
struct SFieldNode
{
    struct SRange
    {
        double least = 0.0;
        double greatest = 0.0;
    };

    bool isLeaf() const { return left == nullptr && right == nullptr; }

    quint32 splitDimension = 0;
    double split = 0.0;      ///< between the children, along the split dimension
    double lowerBound = 0.0; ///< least coordinate of the right child there
    double upperBound = 0.0; ///< greatest coordinate of the left one
    qint32 first = 0;
    qint32 last = -1;
    std::array<SRange, 3> bounds; ///< one for each dimension of the tree
    std::unique_ptr<SFieldNode> left;
    std::unique_ptr<SFieldNode> right; ///< null beside an only child
};

/// A point of a field, seen from somewhere.
struct SFieldNeighbour
{
    double distance = 0.0;
    quint32 point = 0;
};
static_assert(sizeof(SFieldNeighbour) == 16, "plug-ins size their lists by it");

class CFieldSearchTree
{
public:
    /// Greatest number of points in a leaf, unless they coincide.
    static constexpr qint32 leafSize = 6;
    /// Points of more components aren't searched: a field has two or three.
    static constexpr quint32 mostDimensions = 3;

    /// \param points  not owned; they must outlive the tree unchanged
    explicit CFieldSearchTree(const std::vector<CNdData>& points);

    quint32 pointCount() const { return static_cast<quint32>(indices.size()); }
    /// Components of the first point.
    quint32 dimension() const { return dimensions; }
    /// Null without points, and for points of more than mostDimensions components.
    const SFieldNode* root() const { return rootNode.get(); }
    /// Numbers of the points, in the order of the leaves.
    const std::vector<qint32>& pointNumbers() const { return indices; }

    /// The nearest points, nearest first; of equally distant ones the lower number first.
    /// \param neighbours  gets as many as there are, count at most; its room is used again
    void nearest(const CNdData& place, quint32 count, std::vector<SFieldNeighbour>& neighbours) const;

private:
    std::unique_ptr<SFieldNode> buildNode(qint32 first, qint32 last, const SFieldNode* parent, int depth);
    SFieldNode::SRange scan(qint32 first, qint32 last, quint32 axis) const;
    qint32 partition(qint32 first, qint32 last, quint32 axis, double mean);
    double coordinate(qint32 place, quint32 axis) const { return points[indices[place]][axis]; }

    const std::vector<CNdData>& points;
    quint32 dimensions = 0;
    std::vector<qint32> indices;
    std::unique_ptr<SFieldNode> rootNode;
};

} // namespace NBrenmark::NField
