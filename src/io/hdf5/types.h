#pragma once
// The compound types of the family, each with the record that goes with it. One type is used in
// memory and in the file, so sizes and offsets are part of the format, gaps included.

#include <QtGlobal>

#include <H5Cpp.h>

namespace NBrenmark {
namespace HDF5DATATYPES {

/// A rotation that acts on a geometry group.
class SAngVelAndPosType : public H5::CompType
{
public:
    struct SRecord
    {
        double angvel[3];
        double poa[3];
    };
    static_assert(sizeof(SRecord) == 48, "part of the format");

    SAngVelAndPosType();
};

/// A number by name.
class SBasicCmpdType : public H5::CompType
{
public:
    struct SRecord
    {
        char name[256];
        double value;
    };
    static_assert(sizeof(SRecord) == 264, "part of the format");

    SBasicCmpdType();
};

/// Bond parameters of a pair of particle types.
class SBondParamCmpdType : public H5::CompType
{
public:
    struct SRecord
    {
        char key[512];
        double normalStiffness;
        double shearStiffness;
        double normalStrength;
        double shearStrength;
        double bondRadius;
    };
    static_assert(sizeof(SRecord) == 552, "part of the format");

    SBondParamCmpdType();
};

/// A number for a pair of materials.
class SCohesionCmpdType : public H5::CompType
{
public:
    struct SRecord
    {
        char name1[256];
        char name2[256];
        double value;
    };
    static_assert(sizeof(SRecord) == 520, "part of the format");

    SCohesionCmpdType();
};

/// The domain of decks before 30.0.17; five bytes at its end are unused.
class SDomainType : public H5::CompType
{
public:
    struct SRecord
    {
        double min[3];
        double max[3];
        unsigned char periodx;
        unsigned char periody;
        unsigned char periodz;
    };
    static_assert(sizeof(SRecord) == 56, "part of the format");

    SDomainType();
};

/// Edinburgh cohesion parameters of a pair of materials.
class SEcmCmpdType : public H5::CompType
{
public:
    struct SRecord
    {
        char name1[512];
        char name2[512];
        double constPullOffForce;
        double surfaceEnergy;
        double contactPlasticityRatio;
        double slopeExponential;
        double tensileExponential;
        double tangentStiffMultiplier;
    };
    static_assert(sizeof(SRecord) == 1072, "part of the format");

    SEcmCmpdType();
};

/// Hysteretic spring parameters of a pair of materials.
class SHystereticCmpdInterType : public H5::CompType
{
public:
    struct SRecord
    {
        char name1[256];
        char name2[256];
        double damping;
        double stiffness;
    };
    static_assert(sizeof(SRecord) == 528, "part of the format");

    SHystereticCmpdInterType();
};

/// An interaction by its key.
class SInteractionType : public H5::CompType
{
public:
    struct SRecord
    {
        char key[512];
        double restitution;
        double staticFriction;
        double rollingFriction;
    };
    static_assert(sizeof(SRecord) == 536, "part of the format");

    SInteractionType();
};

/// Leeds adhesion parameters of a pair of materials.
class SLeedsAdhesionCmpdType : public H5::CompType
{
public:
    struct SRecord
    {
        char name1[512];
        char name2[512];
        double plasticStiffness;
        double elasticStiffness;
        double plasticAdhesiveStiffness;
        double tangentialStiffness;
        double initialAdhesiveForce;
        double initialAdhesivePlasticForce;
    };
    static_assert(sizeof(SRecord) == 1072, "part of the format");

    SLeedsAdhesionCmpdType();
};

/// A material.
class SMaterialType : public H5::CompType
{
public:
    struct SRecord
    {
        char name[256];
        double poisson;
        double shearMod;
        double density;
        double workFunction;
        quint32 type;
    };
    static_assert(sizeof(SRecord) == 296, "part of the format");

    SMaterialType();
};

namespace v300004 {

/// A material before 30.0.4, when materials had no type.
class SMaterialType : public H5::CompType
{
public:
    struct SRecord
    {
        char name[256];
        double poisson;
        double shearMod;
        double density;
        double workFunction;
    };
    static_assert(sizeof(SRecord) == 288, "part of the format");

    SMaterialType();
};

} // namespace v300004

/// A motion of a moving plane.
class SMovingPlaneMotionCmpdType : public H5::CompType
{
public:
    struct SRecord
    {
        double velocity;
        double accel;
        double startTime;
        double endTime;
    };
    static_assert(sizeof(SRecord) == 32, "part of the format");

    SMovingPlaneMotionCmpdType();
};

/// A count by name.
class SNameCountType : public H5::CompType
{
public:
    struct SRecord
    {
        char name[256];
        quint32 count;
    };
    static_assert(sizeof(SRecord) == 260, "part of the format");

    SNameCountType();
};

/// A point.
class SPointType : public H5::CompType
{
public:
    struct SRecord
    {
        double xyz[3];
    };
    static_assert(sizeof(SRecord) == 24, "part of the format");

    SPointType();
};

/// A quaternion.
class SQuaternionType : public H5::CompType
{
public:
    struct SRecord
    {
        double wxyz[4];
    };
    static_assert(sizeof(SRecord) == 32, "part of the format");

    SQuaternionType();
};

/// A sphere of a particle type. Files have always left the bytes from 256 to 512 unused.
class SSphereType : public H5::CompType
{
public:
    struct SRecord
    {
        char name[256];
        char unused[256];
        double contactRadius;
        double physicalRadius;
        double pos[3];
    };
    static_assert(sizeof(SRecord) == 552, "part of the format");

    SSphereType();
};

/// A bin of a user-defined size distribution.
class STwoDoublesType : public H5::CompType
{
public:
    struct SRecord
    {
        double first;
        double second;
    };
    static_assert(sizeof(SRecord) == 16, "part of the format");

    STwoDoublesType();
};

} // namespace HDF5DATATYPES
} // namespace NBrenmark
