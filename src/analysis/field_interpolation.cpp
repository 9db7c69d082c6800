// The weights of nearby points: by the inverse of their distance.
#include "analysis/field_interpolation.h"

namespace NBrenmark::NField {

/// Nearer than this is the point itself, m.
static constexpr double samePlace = 1e-12;

bool CIdwInterpolation::interpolate(const std::vector<SFieldNeighbour>& neighbours, const std::vector<CNdData>& values,
                                    CNdData& result) const
{
    if (neighbours.empty() || values.empty())
        return false;
    const quint32 components = values.front().size();
    double sum = 0.0;
    for (const SFieldNeighbour& neighbour : neighbours) {
        if (neighbour.distance < samePlace) {
            result.resize(components);
            for (quint32 i = 0; i < components; ++i)
                result[i] = values[neighbour.point][i];
            return true;
        }
        sum += 1.0 / neighbour.distance;
    }
    result.resize(components);
    for (quint32 i = 0; i < components; ++i)
        for (const SFieldNeighbour& neighbour : neighbours)
            result[i] += values[neighbour.point][i] / neighbour.distance * (1.0 / sum);
    return true;
}

} // namespace NBrenmark::NField
