#pragma once
// The bonds of a timestep as the bonding model sees them: rows found by the two ends of a pair.

#include "maths/vector.h"

#include <QtGlobal>
#include <array>

namespace NBrenmark {

class CBondParameters;

/// Two u32 of one end, two of the other.
using BondEnds = std::array<quint32, 4>;

/// One bond, in place.
struct SBondRow
{
    quint32* state = nullptr;   ///< 1 intact, 0 broken; null for no row
    double* brokenAt = nullptr; ///< s
    const CBondParameters** parameters = nullptr;
    C3DVector* normalForce = nullptr;      ///< N
    C3DVector* tangentialForce = nullptr;  ///< N
    C3DVector* normalMoment = nullptr;     ///< N m
    C3DVector* tangentialMoment = nullptr; ///< N m
};

class IBondTable
{
public:
    virtual ~IBondTable() = default;
    /// \return whether the table holds the pair
    virtual bool find(const BondEnds& ends, SBondRow& row) = 0;
    /// Makes an intact row of zeros. \return false if there is no room: the solver makes some between two steps
    virtual bool make(const BondEnds& ends, const CBondParameters& parameters, SBondRow& row) = 0;
};

} // namespace NBrenmark
