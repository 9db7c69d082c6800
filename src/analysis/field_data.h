#pragma once
// A field: a cloud of points in space with a value at each, imported by a user and kept with the deck. Its value
// anywhere else follows from the points nearby.

#include "analysis/entry_form.h"
#include "analysis/field_display_options.h"
#include "analysis/field_search_tree.h"
#include "model/bounding_box.h"

#include <memory>
#include <string>
#include <vector>

namespace NBrenmark::NField {

class IFieldInterpolation;

/// The plane that points of two components lie in.
enum EFieldPlane : qint32
{
    ePlaneXY = 0,
    ePlaneXZ = 1,
    ePlaneYZ = 2,
    eNoPlane = 3 ///< points in space
};

class CFieldData : public IFormed
{
public:
    static constexpr qint32 noId = -1;

    CFieldData();
    CFieldData(const CFieldData&) = delete; // the tree looks at the points
    CFieldData& operator=(const CFieldData&) = delete;

    /// False, with the field empty, after a cancel; false as well if what was read is no valid field.
    /// \throws std::exception  the record ends early, or announces more than follows
    bool read(CVersionedStream& stream, IProgressController* progress) override;
    void form(IEntryForm& f) override;
    void clear();

    /// Takes points and values over. Bounds, magnitudes and the tree follow.
    void setSamples(std::vector<CNdData> points, std::vector<CNdData> valuesThere);

    /// Only valid fields are stored: named, numbered, a value for each of one point or more, and points in space
    /// or in a plane as plane says.
    bool isValid() const { return invalidity().empty(); }
    /// What a field lacks to be valid; empty if nothing.
    std::string invalidity() const;
    /// Components of a value: 1 for a scalar field, 2 or 3 for a vector field, 0 without values.
    quint32 getValueDimension() const { return valueList.empty() ? 0 : valueList.front().size(); }

    /// The field's value anywhere: interpolated between the nearest points, or that of the nearest one.
    /// \param place          of as many components as the points
    /// \param neighbours     those that were used; its room is used again from call to call
    /// \param neighbourCount how many points are asked for; 0 for defaultNeighbours
    /// \param interpolation  null for the nearest point's value
    /// \return false, with result untouched, for a field without points
    bool valueAt(const CNdData& place, CNdData& result, std::vector<SFieldNeighbour>& neighbours,
                 quint32 neighbourCount, const IFieldInterpolation* interpolation) const;
    static constexpr quint32 defaultNeighbours = 8;

    const std::vector<CNdData>& positions() const { return positionList; }
    const std::vector<CNdData>& values() const { return valueList; }
    const CFieldSearchTree& searchTree() const { return *tree; }

    std::string name;
    qint32 id = noId;
    CBoundingBox positionBounds;
    CBoundingBox valueBounds;
    double minimumMagnitude = 0.0; ///< of a value's length
    double maximumMagnitude = 0.0;
    CFieldDisplayOptions displayOptions;
    qint32 plane = eNoPlane;

private:
    void updateDerivedData();

    std::vector<CNdData> positionList; ///< m
    std::vector<CNdData> valueList;
    std::unique_ptr<CFieldSearchTree> tree; ///< never null
};

} // namespace NBrenmark::NField
