#pragma once
// What names the two ends of a contact or bond. A row holds positions in the store of particles and in
// the meshes of geometry, no pointers: they are checked again after each read.

#include <QtGlobal>
#include <array>
#include <vector>

namespace NBrenmark {

class CParticleTypes;

/// First end: index of the particle's type, then slot x spheres of the type + sphere. Second end: the
/// same, or index of the geometry group, then index of the triangle inside the group. Of two particles
/// the one with the lower id is the first end.
using PairRow = std::array<quint32, 4>;
static_assert(sizeof(PairRow) == 16, "arrays of pairs are rows of four words");

/// Stands for no row.
constexpr quint32 noRow = 0xFFFFFFFFu;

/// A sphere of a particle.
struct SParticleEnd
{
    quint32 slot = 0;
    quint32 sphere = 0;
};

/// Takes an end of a row apart.
/// \return false if there is no such type, it has no spheres, or the slot holds no particle
bool findParticleEnd(const CParticleTypes& types, quint32 typeIndex, quint32 element, SParticleEnd& end);

/// Triangles of each geometry group, by the group's index; 0 where there is no group.
using TriangleCounts = std::vector<quint32>;

inline bool hasTriangle(const TriangleCounts& groups, quint32 group, quint32 triangle)
{
    return group < groups.size() && triangle < groups[group];
}

} // namespace NBrenmark
