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

/// One overlap and what acts at it.
struct SCurvePoint
{
    double overlap = 0.0;         ///< m
    double normalForce = 0.0;     ///< N, above 0 apart
    double tangentialForce = 0.0; ///< N
    double torque = 0.0;          ///< on the first, N m
    std::vector<double> history;  ///< the values of the models' contact properties, in the order of their names
};

struct SCurve
{
    std::string title;                ///< "Ball on Steel wall"
    std::vector<std::string> models;  ///< of the chain, in order
    std::vector<std::string> history; ///< names of the values
    std::vector<SCurvePoint> points;
    std::size_t unloading = 0; ///< the first point on the way back; the number of points without one
};

/// \throws CFailure  a name that the deck lacks or that means two things, a model that can't be calculated, a pair of
///                   materials without parameters
SCurve curveOf(const CCreatorData& deck, const SCurveOptions& options);

} // namespace NBrenmark
