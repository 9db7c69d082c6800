#pragma once
// The records as which the parameters of factories are edited. All values are SI; unitsType is the
// number of the quantity by whose unit a person is shown them.

#include "core/parameter_support.h"
#include "maths/fuzzy_less.h"
#include "maths/matrix3.h"

#include <QString>
#include <QStringList>
#include <vector>

namespace NBrenmark {

class CParticleTypes;

constexpr quint32 noQuantity = 1;
constexpr quint32 angularVelocityQuantity = 5;
constexpr quint32 velocityQuantity = 17;

// ---------------------------------------------------------------- sizes

class CFixedSizeParamData : public CParamData<CFixedSizeParamData>
{
public:
    bool radiusScaling = true;
    double value = 1.0;
};

class CRandomSizeParamData : public CParamData<CRandomSizeParamData>
{
public:
    bool radiusScaling = true;
    double min = 0.0;
    double max = 0.0;
};

class CNormalSizeParamData : public CParamData<CNormalSizeParamData>
{
public:
    double mean = 0.0;
    double deviation = 0.0;
    double lowerCap = 0.0;
    double upperCap = 0.0;
    bool capped = false;
    bool radiusScaling = true;
};

class CLogNormalSizeParamData : public CParamData<CLogNormalSizeParamData>
{
public:
    double mean = 0.0;
    double deviation = 0.0;
    double lowerCap = 0.0;
    double upperCap = 0.0;
    bool capped = false;
    bool radiusScaling = true;
    bool logMean = true;
};

class CUserDefinedSizeParamData : public CParamData<CUserDefinedSizeParamData>
{
public:
    bool radiusScaling = true;
    FuzzyMap<double> percentages; ///< each size's own share in percent
};

// ---------------------------------------------------------------- velocities, linear and angular

class CFixedVelocityParamData : public CParamData<CFixedVelocityParamData>
{
public:
    C3DVector value;
    quint32 unitsType = noQuantity;
};

class CLinearVelocityParamData : public CParamData<CLinearVelocityParamData>
{
public:
    C3DVector startVelocity;
    C3DVector endVelocity;
    quint32 unitsType = noQuantity;
};

class CNormalVelocityParamData : public CParamData<CNormalVelocityParamData>
{
public:
    C3DVector direction;
    double mean = 0.0;
    double deviation = 0.0;
    quint32 unitsType = noQuantity;
};

class CSprayVelocityParamData : public CParamData<CSprayVelocityParamData>
{
public:
    C3DVector direction;
    double sprayAngle = 0.0; ///< rad
    double mean = 0.0;
    double deviation = 0.0;
    quint32 unitsType = noQuantity;
};

/// Of the random velocities, angular velocities and custom property values.
class CRandomParamData : public CParamData<CRandomParamData>
{
public:
    double min = 0.0;
    double max = 0.0;
    quint32 unitsType = noQuantity;
};

// ---------------------------------------------------------------- orientation, position, type

class CFixedOrientationParamData : public CParamData<CFixedOrientationParamData>
{
public:
    C3DMatrix orientation;
};

class C3DLatticePositionParamData : public CParamData<C3DLatticePositionParamData>
{
public:
    C3DVector separations; ///< the lengths of the three axes, m
    C3DVector rotation;    ///< rad
    C3DPoint start;        ///< m
};

class CRandomPositionParamData : public CParamData<CRandomPositionParamData>
{
public:
    QString style;         ///< "random" or "random_walk"
    double maxAngle = 0.0; ///< rad
    double multiFactor = 0.0;
    double densityFactor = 0.0;
};

class CFixedTypeParamData : public CParamData<CFixedTypeParamData>
{
public:
    QString name;
};

class CBinaryTypeParamData : public CParamData<CBinaryTypeParamData>
{
public:
    QStringList names;
};

/// The types that there are to choose from; given to a type parameter of any kind.
class CParticleTypesParamData : public CParamData<CParticleTypesParamData>
{
public:
    const CParticleTypes* particleTypes = nullptr; ///< not owned
};

// ---------------------------------------------------------------- custom property values

class CFloatingPointNormalDistParamData : public CParamData<CFloatingPointNormalDistParamData>
{
public:
    double mean = 0.0;
    double deviation = 0.0;
    quint32 unitsType = noQuantity;
};

class CMultipleFloatingPointNumberParamData : public CParamData<CMultipleFloatingPointNumberParamData>
{
public:
    std::vector<double> values; ///< one for each element
    QStringList elementNames;
    quint32 unitsType = noQuantity;
};

class CMultipleBooleanParamData : public CParamData<CMultipleBooleanParamData>
{
public:
    std::vector<bool> values; ///< one for each element
    QStringList elementNames;
};

} // namespace NBrenmark
