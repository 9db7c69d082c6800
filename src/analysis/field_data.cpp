// The record of a field, and what follows from its points: boxes, greatest values, and the tree for its values
// elsewhere.
#include "analysis/field_data.h"

#include "analysis/field_interpolation.h"
#include "core/log.h"
#include "core/progress.h"

#include <algorithm>
#include <utility>

namespace NBrenmark::NField {

CFieldData::CFieldData() { clear(); }

void CFieldData::clear()
{
    name.clear();
    id = noId;
    plane = eNoPlane;
    displayOptions = CFieldDisplayOptions();
    setSamples({}, {});
}

void CFieldData::setSamples(std::vector<CNdData> points, std::vector<CNdData> valuesThere)
{
    positionList = std::move(points);
    valueList = std::move(valuesThere);
    updateDerivedData();
}

std::string CFieldData::invalidity() const
{
    if (name.empty())
        return "it has no name";
    if (id == noId)
        return "it has no id";
    if (positionList.empty() || valueList.empty())
        return "it has no points";
    if (positionList.size() != valueList.size())
        return "it has " + std::to_string(positionList.size()) + " points and " + std::to_string(valueList.size()) +
               " values";
    const quint32 components = positionList.front().size();
    if ((components == 3 && plane != eNoPlane) || (components == 2 && plane == eNoPlane))
        return "its points have " + std::to_string(components) + " components, which don't go with plane " +
               std::to_string(plane);
    return std::string();
}

// ---------------------------------------------------------------- what follows from the samples

/// The third axis of a vector in a plane is none.
static C3DPoint cornerOf(const CNdData& v) { return C3DPoint(v[0], v[1], v.size() == 2 ? 0.0 : v[2]); }

static CBoundingBox boxRound(const std::vector<CNdData>& vectors)
{
    CBoundingBox box;
    if (vectors.empty())
        return box;
    box.upper = box.lower = cornerOf(vectors.front());
    for (const CNdData& v : vectors) {
        const C3DPoint corner = cornerOf(v);
        box.upper = {std::max(box.upper.x, corner.x), std::max(box.upper.y, corner.y), std::max(box.upper.z, corner.z)};
        box.lower = {std::min(box.lower.x, corner.x), std::min(box.lower.y, corner.y), std::min(box.lower.z, corner.z)};
    }
    return box;
}

void CFieldData::updateDerivedData()
{
    positionBounds = boxRound(positionList);
    valueBounds = boxRound(valueList);
    minimumMagnitude = maximumMagnitude = valueList.empty() ? 0.0 : valueList.front().length();
    for (const CNdData& value : valueList) {
        minimumMagnitude = std::min(minimumMagnitude, value.length());
        maximumMagnitude = std::max(maximumMagnitude, value.length());
    }
    tree = std::make_unique<CFieldSearchTree>(positionList);
}

bool CFieldData::valueAt(const CNdData& place, CNdData& result, std::vector<SFieldNeighbour>& neighbours,
                         quint32 neighbourCount, const IFieldInterpolation* interpolation) const
{
    const quint32 wanted = neighbourCount != 0 ? neighbourCount : defaultNeighbours;
    tree->nearest(place, interpolation != nullptr ? wanted : 1, neighbours);
    if (neighbours.empty() || positionList.size() != valueList.size())
        return false;
    if (interpolation != nullptr)
        return interpolation->interpolate(neighbours, valueList, result);
    result = valueList[neighbours.front().point];
    return true;
}

// ---------------------------------------------------------------- the record

void CFieldData::form(IEntryForm& f)
{
    f.text("name", name);
    f.i32("id", id);
    f.i32("plane", plane);
    f.vectors("positions", positionList);
    f.vectors("values", valueList);
    f.part("displayOptions", displayOptions);
}

bool CFieldData::read(CVersionedStream& stream, IProgressController* progress)
{
    clear();
    IFormed::read(stream, progress);
    if (wantsCancel(progress)) {
        clear();
        return false;
    }
    if (positionList.size() != valueList.size()) {
        report(eRemark, NLogTitle::settings,
               "Field \"" + name + "\": " + std::to_string(positionList.size()) + " points and " +
                   std::to_string(valueList.size()) + " values, which don't go together.");
        positionList.clear();
        valueList.clear();
    }
    if (!positionList.empty()) {
        const quint32 components = positionList.front().size();
        if (components == 3)
            plane = eNoPlane;
        else if (components == 2 && plane == eNoPlane)
            plane = ePlaneXY;
    }
    updateDerivedData();
    return isValid();
}

} // namespace NBrenmark::NField
