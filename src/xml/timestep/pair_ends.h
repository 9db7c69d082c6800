#pragma once
// The two ends of a contact or bond: in a document by the ids of particles and triangles, in a row by their places.

#include "results/timestep_data.h"
#include "xml/xml_attributes.h"
#include "xml/xml_output.h"

namespace NBrenmark {

/// What a document says of the ends of a pair.
struct SPairIds
{
    quint32 particle1 = 0, surface1 = 0;
    quint32 particle2 = 0, surface2 = 0; ///< between spheres
    quint32 triangle = 0;                ///< of a sphere and a triangle
};

/// \param isGeometry  whether the second end is a triangle
/// \return false if an end isn't there
bool findIds(const CTimestepData& timestep, const PairRow& row, bool isGeometry, SPairIds& ids);
bool findRow(const CTimestepData& timestep, const SPairIds& ids, bool isGeometry, PairRow& row);

template <class TForm, class TIds>
void pairForm(TForm& f, TIds& ids, bool isGeometry)
{
    f.attribute(isGeometry ? "particle" : "particle1", ids.particle1);
    f.attribute(isGeometry ? "surface" : "surface1", ids.surface1);
    if (isGeometry) {
        f.attribute("geometry", ids.triangle);
        return;
    }
    f.attribute("particle2", ids.particle2);
    f.attribute("surface2", ids.surface2);
}

} // namespace NBrenmark
