#pragma once
// Collisions as timesteps below 20.0.0 hold them: one object a pair, each end by the id of its particle or triangle.
// They are read, turned into rows of today's families, and thrown away with the read.

#include "maths/quaternion.h"
#include "maths/vector.h"

#include <QString>
#include <memory>
#include <vector>

namespace NBrenmark {

class IFileVisitorReader;

namespace NLegacySupport {

class IOldRecordListener;

/// One end of a collision: a sphere of a particle.
class SLegacyParticleSide
{
public:
    qint32 element = 0; ///< number of the sphere within its particle
    qint32 particleId = 0;
    QString name;
    double radius = 0.0;       ///< m
    C3DVector velocity;        ///< m/s
    C3DVector angularVelocity; ///< rad/s
    CQuaternion orientation;
    C3DPoint position; ///< m
};

/// The end of a collision that is a triangle.
class SLegacyGeometrySide
{
public:
    qint32 triangleId = 0;
    QString name;
    C3DVector velocity; ///< m/s
    C3DPoint position;  ///< m
};

class CCollision
{
public:
    virtual ~CCollision() = default;
    virtual void read(IFileVisitorReader& visitor);
    /// As the kind that it is.
    virtual void passTo(IOldRecordListener& listener, qint64 byte) const = 0;

    /// It goes on until it has an end time.
    bool hasEnded() const { return endTime > 0.0; }

    double startTime = 0.0; ///< s
    double endTime = 0.0;   ///< s
    quint32 iterations = 0;
    C3DPoint position;              ///< m
    C3DVector maxNormalForce;       ///< N
    C3DVector totalNormalForce;     ///< N
    C3DVector maxTangentialForce;   ///< N
    C3DVector totalTangentialForce; ///< N
    double shearEnergy = 0.0;       ///< J
    double normalEnergy = 0.0;      ///< J
    quint32 id = 0;
    C3DVector unitCpVector;
    C3DVector relativeVelocity; ///< m/s
};

class CSurfSurfCollision : public CCollision
{
public:
    void read(IFileVisitorReader& visitor) override;
    void passTo(IOldRecordListener& listener, qint64 byte) const override;

    SLegacyParticleSide first;
    SLegacyParticleSide second;
};

class CSurfGeomCollision : public CCollision
{
public:
    void read(IFileVisitorReader& visitor) override;
    void passTo(IOldRecordListener& listener, qint64 byte) const override;

    SLegacyParticleSide first;
    SLegacyGeometrySide second;
};

class CCollisionList : public std::vector<std::unique_ptr<CCollision>>
{
};

/// The collisions of a timestep, finished ones and those that go on.
class CActiveCollisions
{
public:
    virtual ~CActiveCollisions() = default;

    CCollisionList surfaceSurface;
    CCollisionList surfaceGeometry;
};

/// The id that the next collision of the solver gets, as the last read left it.
extern quint32 nextCollisionId;

/// \param kind  0: sphere to sphere, 1: sphere to triangle
/// \return null for any other
std::unique_ptr<CCollision> createCollision(qint32 kind);

} // namespace NLegacySupport
} // namespace NBrenmark
