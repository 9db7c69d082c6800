#pragma once
// Contacts and bonds as timesteps below 20.0.0 hold them: a record a pair, its ends by the ids of particles and
// triangles.

#include "maths/vector.h"

#include <QtGlobal>
#include <vector>

namespace NBrenmark {

class IFileVisitorReader;

namespace NLegacySupport {

class SLegacyContact
{
public:
    C3DPoint position;           ///< m
    C3DVector contactVector1;    ///< m
    C3DVector contactVector2;    ///< m
    double normalOverlap = 0.0;  ///< m
    C3DVector tangentialOverlap; ///< m
    C3DVector normalForce;       ///< N
    C3DVector tangentialForce;   ///< N

    // The ends: a sphere by its number within a particle.
    qint32 firstParticleId = 0;
    qint32 firstElement = 0;
    qint32 secondParticleId = 0; ///< sphere to sphere
    qint32 secondElement = 0;    ///< sphere to sphere
    qint32 triangleId = 0;       ///< sphere to triangle
};

class SLegacyContactLists
{
public:
    std::vector<SLegacyContact> surfaceSurface;
    std::vector<SLegacyContact> surfaceGeometry;
};

class CBond
{
public:
    virtual ~CBond() = default;
    virtual void read(IFileVisitorReader& visitor);

    C3DVector normalForce;      ///< N
    C3DVector tangentialForce;  ///< N
    C3DVector normalTorque;     ///< N m
    C3DVector tangentialTorque; ///< N m
    quint32 state = 0;          ///< EBondState
    double breakTime = 0.0;     ///< s
};

class CSurfSurfBond : public CBond
{
public:
    void read(IFileVisitorReader& visitor) override;

    qint32 firstParticleId = 0;
    qint32 secondParticleId = 0;
    qint32 firstElement = 0;
    qint32 secondElement = 0;
};

class CBondList : public std::vector<CSurfSurfBond>
{
};

} // namespace NLegacySupport
} // namespace NBrenmark
