#pragma once
// What the two forms of a geometry group, in a creator block and in a timestep, have in common.

#include "io/dem/form.h"
#include "model/geometry/geometry_group.h"

#include <vector>

namespace NBrenmark {

class CDemCreatorDataReader;

/// Arrays of triangles as a file holds them.
struct STriangleRows
{
    std::vector<quint32> ids;
    std::vector<TriangleNodes> nodes;
    std::vector<TriangleForce> forces;
    std::vector<double> charges;
};

/// The arrays that the mask names, in the order of the file.
template <class TArrays, class TIds, class TNodes, class TForces, class TCharges>
void triangleForm(TArrays& arrays, quint32 mask, TIds& ids, TNodes& nodes, TForces& forces, TCharges& charges)
{
    const auto rows = [&](ETriangleField field, const char* what, auto& array) {
        if ((mask & field) != 0)
            arrays.rows(what, array);
    };
    rows(eTriangleIds, "triangle ids", ids);                 // unique in the deck, or all are numbered anew
    rows(eTriangleNodes, "triangles", nodes);                // rows of the vertices, checked where they are used
    rows(eTriangleForces, "forces on triangles", forces);    // N, N m, N
    rows(eTriangleCharges, "charges of triangles", charges); // C
}

/// The words that a solver leaves with each factory: four are kept, whatever the file has.
template <class TForm, class TFactory>
void factoryCountersForm(TForm& f, TFactory& factory)
{
    if (!f.stores(gateFactoryCounters))
        return;
    if constexpr (TForm::isReading) {
        const quint32 count = f.count("counter", 4);
        factory.counters = {};
        for (quint32 i = 0; i < count; ++i) {
            quint32 word = 0;
            f.i32(word);
            if (i < factory.counters.size())
                factory.counters[i] = word;
        }
    }
    else {
        f.i32(static_cast<quint32>(factory.counters.size()));
        for (const quint32 word : factory.counters)
            f.i32(word);
    }
}

/// A mesh whose triangles are stored one by one, and the numbers of the group after it.
void readOldMesh(CDemCreatorDataReader& reader, CInForm& f, CGeometryGroup& group);

/// Whether the timestep at which the stream is holds its geometry whole, in the form of a creator block. The stream
/// is left where it is.
bool wholeGeometryFollows(CDemDataStream& stream);

} // namespace NBrenmark
