#pragma once
// What a row takes in memory, whichever of its arrays a file holds.

#include "results/collisions.h"
#include "results/contacts.h"

namespace NBrenmark {

constexpr quint64 contactRowBytes =
    sizeof(PairRow) + sizeof(C3DPoint) + 5 * sizeof(C3DVector) + 2 * sizeof(double) + sizeof(quint32);

/// Of the two ends one after the other.
constexpr quint64 collisionRowBytes =
    2 * sizeof(quint32) + 4 * sizeof(double) + 6 * sizeof(C3DVector) +
    2 * (sizeof(quint32) + sizeof(double) + 3 * sizeof(C3DVector) + sizeof(CQuaternion));

} // namespace NBrenmark
