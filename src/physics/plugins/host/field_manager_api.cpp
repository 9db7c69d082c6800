#include "physics/plugins/host/field_manager_api.h"

#include "analysis/field_interpolation.h"
#include "core/deck/simulation.h"
#include "core/deck/simulation_settings.h"

namespace NBrenmark::NApiCore {

using NField::CFieldData;

// ---------------------------------------------------------------- the manager

static NField::CFieldManager* fieldsOf(const CHostContext& context)
{
    CSimulation* const simulation = context.simulation();
    return simulation != nullptr ? &simulation->settings->fieldManager() : nullptr;
}

static IFieldApi_1_0* newField(const CHostContext* context, const CFieldData* field, unsigned int wanted,
                               unsigned int major, unsigned int minor)
{
    const bool isOffered = wanted == eField && major == 1 && minor == 0;
    return field != nullptr && isOffered ? new CFieldApi_1(context, field->id) : nullptr;
}

IFieldApi_1_0* CFieldManagerApi_1::getField(unsigned int wanted, unsigned int wantedMajor, unsigned int wantedMinor,
                                            const char* name) const
{
    const NField::CFieldManager* const fields = fieldsOf(*context);
    const CFieldData* const field =
        fields != nullptr && name != nullptr ? fields->getField(std::string(name)) : nullptr;
    return newField(context, field, wanted, wantedMajor, wantedMinor);
}

IFieldApi_1_0* CFieldManagerApi_1::getField(unsigned int wanted, unsigned int wantedMajor, unsigned int wantedMinor,
                                            unsigned int index) const
{
    const NField::CFieldManager* const fields = fieldsOf(*context);
    const CFieldData* const field = fields != nullptr ? fields->getField(static_cast<qint32>(index)) : nullptr;
    return newField(context, field, wanted, wantedMajor, wantedMinor);
}

// ---------------------------------------------------------------- one field

const CFieldData* CFieldApi_1::field() const
{
    const NField::CFieldManager* const fields = fieldsOf(*context);
    return fields != nullptr ? fields->getField(fieldId) : nullptr;
}

void CFieldApi_1::getVersion(unsigned int& major, unsigned int& minor) const
{
    major = 1;
    minor = 0;
}

bool CFieldApi_1::isScalar() const
{
    const CFieldData* const asked = field();
    return asked != nullptr && asked->getValueDimension() == 1;
}

/// The components of a point that a field goes by.
static NField::CNdData placeIn(const CFieldData& field, double x, double y, double z)
{
    NField::CNdData place(field.plane == NField::eNoPlane ? 3 : 2);
    place[0] = field.plane == NField::ePlaneYZ ? y : x;
    place[1] = field.plane == NField::ePlaneXY || field.plane == NField::eNoPlane ? y : z;
    if (field.plane == NField::eNoPlane)
        place[2] = z;
    return place;
}

/// The value of a field, valid until this thread asks again; null for a field without points.
static const NField::CNdData* valueThere(const CFieldData& field, double x, double y, double z,
                                         unsigned int neighbourCount, int method)
{
    constexpr std::size_t usualNeighbours = 1024;
    thread_local NField::CNdData result;
    thread_local std::vector<NField::SFieldNeighbour> neighbours;
    neighbours.reserve(usualNeighbours);
    const NField::CIdwInterpolation weighted;
    const bool isThere =
        field.valueAt(placeIn(field, x, y, z), result, neighbours, neighbourCount, method == 0 ? &weighted : nullptr);
    return isThere ? &result : nullptr;
}

bool CFieldApi_1::getVector(double x, double y, double z, unsigned int neighbours, int method, double& valueX,
                            double& valueY, double& valueZ) const
{
    const CFieldData* const asked = field();
    if (asked == nullptr)
        return false;
    const quint32 components = asked->getValueDimension();
    if (components == 1)
        return true;
    const NField::CNdData* const value = valueThere(*asked, x, y, z, neighbours, method);
    if (value == nullptr)
        return false;
    const double a = (*value)[0], b = (*value)[1];
    if (components == 3) {
        valueX = a;
        valueY = b;
        valueZ = (*value)[2];
        return true;
    }
    // A value of two components is in the field's plane.
    valueX = asked->plane == NField::ePlaneYZ ? 0.0 : a;
    valueY = asked->plane == NField::ePlaneYZ ? a : asked->plane == NField::ePlaneXZ ? 0.0 : b;
    valueZ = asked->plane == NField::ePlaneYZ || asked->plane == NField::ePlaneXZ ? b : 0.0;
    return true;
}

bool CFieldApi_1::getScalar(double x, double y, double z, unsigned int neighbours, int method, double& out) const
{
    const CFieldData* const asked = field();
    if (asked == nullptr || asked->getValueDimension() != 1)
        return false;
    const NField::CNdData* const value = valueThere(*asked, x, y, z, neighbours, method);
    if (value == nullptr)
        return false;
    out = (*value)[0];
    return true;
}

} // namespace NBrenmark::NApiCore
