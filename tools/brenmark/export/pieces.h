#pragma once
// What an export takes out of a timestep: particles, contacts and geometry, each as points (or triangles) with arrays of
// values in the chosen units.

#include "brenmark/values/chosen_units.h"
#include "brenmark/view/left_out.h"

#include "core/deck/simulation_frame.h"

#include <string>
#include <vector>

namespace NBrenmark {

struct SPieceArray
{
    std::string name; ///< of the attribute, without its unit
    std::string unit; ///< "m/s"; empty for none
    std::size_t columns = 1;
    bool isInteger = false;
    std::vector<double> values;     ///< rows x columns; not a number where the deck has none
    std::vector<std::string> heads; ///< of the columns, with the unit
};

struct SPiece
{
    std::string kind; ///< "particles", "contacts", "geometry"
    std::string lengthUnit;
    std::vector<double> points;          ///< n x 3, in the unit of lengths
    std::vector<quint32> triangles;      ///< m x 3; none: the points are the rows
    std::vector<qint32> owners;          ///< of each row: which of the names
    std::vector<std::string> ownerNames; ///< particle types, families of contacts, geometry groups
    std::vector<SPieceArray> arrays;     ///< with a row for each owner

    std::size_t rows() const { return owners.size(); }
    std::size_t pointCount() const { return points.size() / 3; }
};

/// The attributes that pieces are made of, positions among them.
/// \param wanted  names of attributes; empty for the usual ones, to which custom properties come
std::vector<std::string> attributesOfPieces(const std::vector<std::string>& wanted);

/// The pieces of a timestep that have rows.
/// \param wanted   names of attributes; empty for the usual ones and all custom properties
/// \param leftOut  gets what the timestep doesn't hold
/// \throws CFailure  no kind has an attribute of that name
std::vector<SPiece> piecesOf(SSimulationFrame& frame, quint32 timestep, const std::vector<std::string>& wanted,
                             const CChosenUnits& units, CLeftOut& leftOut);

} // namespace NBrenmark
