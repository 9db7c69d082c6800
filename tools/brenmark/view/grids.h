#pragma once
// What a view shows of a timestep: grids of points, lines or triangles, and the arrays that lie on them, each by the file
// and the dataset that hold it.

#include <QtGlobal>

#include <set>
#include <string>
#include <vector>

namespace NBrenmark {

enum EArrayKind
{
    eFloats,   ///< of 64 bits
    eSigned,   ///< integers of 32 bits
    eUnsigned, ///< the same
};

/// A dataset as it is stored, or some of its columns, or a multiple of it.
struct SNamedArray
{
    std::string name;    ///< as it is shown; may hold any character
    std::string file;    ///< relative to the view
    std::string dataset; ///< path in the file
    EArrayKind kind = eFloats;
    quint64 rows = 0;
    quint64 columns = 0; ///< 0: a list
    quint64 firstColumn = 0;
    quint64 shownColumns = 0; ///< 0: all
    double factor = 1.0;      ///< by which values are multiplied when they are shown
};

/// Twelve edges of a box, m. Its numbers are in the view itself.
struct SBoxOutline
{
    double lower[3];
    double upper[3];
};

struct SGrid
{
    std::string name;
    SNamedArray points;               ///< n x 3, m
    SNamedArray triangles;            ///< n x 3, rows of points; no rows: the grid is of single points
    std::vector<SNamedArray> values;  ///< of the triangles if there are some, else of the points
    std::set<std::string> passedOver; ///< names of values that weren't chosen
};

struct SViewStep
{
    quint32 number = 0;
    double time = 0.0; ///< s
    std::vector<SGrid> grids;
    std::vector<SBoxOutline> domain; ///< none or one
};

} // namespace NBrenmark
