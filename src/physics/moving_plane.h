#pragma once
// Surfaces that move while their mesh stays. The model describes them only: it adds no force.

#include "maths/vector.h"
#include "physics/built_in_contact_model.h"

#include <map>
#include <vector>

namespace NBrenmark {

struct SMovingPlaneMotion
{
    double velocity = 0.0;     ///< m/s
    double acceleration = 0.0; ///< m/s^2
    double startTime = 0.0;    ///< s
    double endTime = 0.0;      ///< s
};

/// The plane moves along the line from one point to the other.
struct SMovingPlane
{
    C3DPoint startPoint; ///< m
    C3DPoint endPoint;   ///< m
    bool display = false;
    std::vector<SMovingPlaneMotion> motions;
};

class CMovingPlaneContactModelParamData : public CParamData<CMovingPlaneContactModelParamData>
{
public:
    explicit CMovingPlaneContactModelParamData(quint32 modelType) : modelType(modelType) {}
    void read(IFileVisitorReader& visitor);
    void write(IFileVisitorWriter& visitor) const;

    std::map<qint32, SMovingPlane> planes; ///< by index of the geometry
    quint32 modelType;
};

class CMovingPlaneContactModel : public CContactModelWith<CMovingPlaneContactModelParamData>
{
public:
    using CContactModelWith::CContactModelWith;
    void reset() override { parameters.planes.clear(); }
    /// Adds no force.
    bool calculateForce(SContact& /*contact*/) override { return true; }

protected:
    std::vector<SRequiredProperty> propertyTable() const override
    {
        return {{eGeometryOwner, "Plane Velocity", 3, eVelocityQuantity}};
    }
};

} // namespace NBrenmark
