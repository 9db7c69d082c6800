#pragma once
// A timestep as a flat picture: discs and lines in pixels, the furthest first, with what the legend says. Nothing here knows
// how it is drawn.

#include "brenmark/export/pieces.h"

#include <array>
#include <string>
#include <vector>

namespace NBrenmark {

struct SColour
{
    int red = 0;
    int green = 0;
    int blue = 0;
};

/// A particle, or a piece of a wall's edge.
struct SMark
{
    double depth = 0.0; ///< towards the eye
    bool isDisc = true;
    double x = 0.0, y = 0.0; ///< centre, or one end
    double radius = 0.0;
    double toX = 0.0, toY = 0.0;
    SColour colour;
};

struct SScene
{
    int width = 960;
    int height = 720;
    std::vector<SMark> marks;
    std::string title;
    std::string legend; ///< "Velocity Magnitude [m/s]"
    double least = 0.0; ///< of the colours
    double greatest = 0.0;
};

/// From blue over green to yellow, which can be distinguished in grey as well. \param share  0 to 1; not a number: grey
SColour colourOf(double share);

/// Where one looks along: "x", "y", "z", or "iso", from aside and above.
/// \return false for another word
bool viewAxes(const std::string& view, std::array<std::array<double, 3>, 3>& axes);

/// \param pieces   of a timestep, in base units but for the attribute; particles with "Diameter"
/// \param axes     right, up, and towards the eye
/// \param leftOut  gets particles without a place
SScene sceneOf(const std::vector<SPiece>& pieces, const std::string& attribute,
               const std::array<std::array<double, 3>, 3>& axes, quint32 timestep, CLeftOut& leftOut);

} // namespace NBrenmark
