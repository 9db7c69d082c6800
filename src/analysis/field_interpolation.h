#pragma once
// How a field's value between its points is made of the values of those nearby.

#include "analysis/field_search_tree.h"

namespace NBrenmark::NField {

class IFieldInterpolation
{
public:
    /// \param neighbours  points by number, with their distances; their values are values[point]
    /// \param result      has as many components as the first of values then
    /// \return false, with nothing changed, if there are no neighbours or no values
    virtual bool interpolate(const std::vector<SFieldNeighbour>& neighbours, const std::vector<CNdData>& values,
                             CNdData& result) const = 0;
    virtual ~IFieldInterpolation() = default;
};

/// Inverse distance weighting: the mean of the neighbours' values, each weighted by 1 / distance.
/// A neighbour nearer than 1e-12 m is the value itself.
class CIdwInterpolation : public IFieldInterpolation
{
public:
    bool interpolate(const std::vector<SFieldNeighbour>& neighbours, const std::vector<CNdData>& values,
                     CNdData& result) const override;
};

} // namespace NBrenmark::NField
