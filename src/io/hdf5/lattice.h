#pragma once
// The rows of a lattice: one dataset for all of its vectors, in an order that creator models and timesteps
// each have for themselves.

#include "io/hdf5/form.h"

#include "model/factories/factory_position.h"

#include <cstring>

namespace NBrenmark {

using LatticeRow = std::array<double, 3>;

/// The first number of each row. TLattice: C3DLattice, const when writing.
template <class TLattice>
auto latticeDefinition(TLattice& l)
{
    return std::array{&l.axisA.x,   &l.axisB.x,   &l.axisC.x,   &l.start.x,  &l.rotation.x,
                      &l.cursor1.x, &l.cursor0.x, &l.cursor2.x, &l.cursor3.x};
}

/// Of what moves while particles are placed.
template <class TLattice>
auto latticeState(TLattice& l)
{
    return std::array{&l.cursor2.x, &l.cursor3.x, &l.cursor1.x, &l.cursor0.x};
}

static_assert(sizeof(C3DVector) == sizeof(LatticeRow) && sizeof(C3DPoint) == sizeof(LatticeRow),
              "a row is copied from its first number on");

template <std::size_t count>
void readLattice(CHdf5FormReader& in, const std::array<double*, count>& places)
{
    std::array<LatticeRow, count> rows;
    in.fixedRows("data", rows);
    for (std::size_t i = 0; i < count; ++i)
        std::memcpy(places[i], rows[i].data(), sizeof(LatticeRow));
}

template <std::size_t count>
void writeLattice(CHdf5FormWriter& out, const std::array<const double*, count>& places)
{
    std::array<LatticeRow, count> rows;
    for (std::size_t i = 0; i < count; ++i)
        std::memcpy(rows[i].data(), places[i], sizeof(LatticeRow));
    out.fixedRows("data", rows);
}

} // namespace NBrenmark
