#pragma once
// The force between two things of a deck over their overlap, by the deck's own chain of contact models.

#include "brenmark/deck_reader.h"

#include <string>
#include <vector>

namespace NBrenmark {

struct SCurveOptions
{
    std::string first;  ///< "NAME", "type:NAME" or "geometry:NAME"
    std::string second; ///< the same
    std::string only;   ///< this model of the chain alone; empty for all
    double from = 0.0;  ///< m
    double to = 0.0;    ///< m
    quint32 count = 0;  ///< points from one to the other, both ends among them
    double speed = 0.0; ///< m/s, towards each other; away while the overlap shrinks
    bool unloads = false;
};

/// Columns that every curve begins with.
enum ECurveColumn
{
    eOverlapColumn,         ///< m
    eNormalForceColumn,     ///< N, above 0 apart
    eTangentialForceColumn, ///< N
    eTorqueColumn,          ///< on the first, N m
    eFirstKeptColumn        ///< the custom properties of the models: of the contact, then of the two
};

struct SCurveColumn
{
    std::string name; ///< "normal force", "Residual Overlap", "Ball: Charge"
    std::string unit; ///< empty without one
};

struct SCurve
{
    std::string title;               ///< "Ball on Steel wall"
    std::vector<std::string> models; ///< of the chain, in order
    std::vector<SCurveColumn> columns;
    std::vector<std::vector<double>> points; ///< a value a column
    std::size_t unloading = 0;               ///< the first point on the way back; the number of points without one
};

/// \throws CFailure  a name that the deck lacks or that means two things, a model that can't be calculated, a pair of
///                   materials without parameters
SCurve curveOf(const CCreatorData& deck, const SCurveOptions& options);

} // namespace NBrenmark
