#pragma once
// The compounds of the family, a line a field. Sizes are part of the format, gaps included.

#include "io/hdf5/compound.h"

#include "materials/interactions.h"
#include "materials/materials.h"
#include "model/domain.h"
#include "model/kinematics/ang_vel_and_pos.h"
#include "model/particle_type.h"
#include "physics/parameter_records.h"

namespace NBrenmark {
namespace HDF5DATATYPES {

// ---------------------------------------------------------------- the model

struct SMaterialType
{
    using Row = CMaterial;
    static constexpr std::tuple fields{
        text<256>("name", &Row::name),
        field("poisson", &Row::poissonsRatio),                    // no unit
        field("shearMod", &Row::shearModulus),                    // Pa
        field("density", &Row::density),                          // kg/m^3
        field("workFunction", &Row::workFunction),                // J; for tribocharging alone
        field("type", &Row::type).since(30, 0, 4, eBulkMaterial), // materials had no type before
    };
    static_assert(sizeOf(fields) == 296 && sizeOf(fields, makeVersion(30, 0, 3)) == 288);
};

struct SInteractionType
{
    struct Row : CInteraction
    {
        QString key; ///< of both materials
    };
    static constexpr std::tuple fields{
        text<512>("key", &Row::key),                     // both names, and what joins them
        field("restitution", &Row::restitution),         // speed of parting to speed of approach
        field("staticFriction", &Row::staticFriction),   // coefficient
        field("rollingFriction", &Row::rollingFriction), // coefficient
    };
    static_assert(sizeOf(fields) == 536);
};

/// A sphere of a particle type.
struct SSphereType
{
    using Row = CSphere;
    static constexpr std::tuple fields{
        text<256>("name", &Row::name),
        SGap<256>(),                                   // files have always left it unused
        field("contactRadius", &Row::contactRadius),   // m
        field("physicalRadius", &Row::physicalRadius), // m
        field("pos", &Row::position),                  // m
    };
    static_assert(sizeOf(fields) == 552);
};

/// A rotation that acts on a geometry group.
struct SAngVelAndPosType
{
    using Row = CAngVelAndPos;
    static constexpr std::tuple fields{
        field("angvel", &Row::angularVelocity), // rad/s
        field("poa", &Row::pointOfAction),      // m
    };
    static_assert(sizeOf(fields) == 48);
};

/// The domain of decks before 30.0.17, which is a group now.
struct SDomainType
{
    using Row = CDomain;
    static constexpr std::tuple fields{
        field("min", &Row::min), // m
        field("max", &Row::max),           field("periodx", &Row::periodicX),
        field("periody", &Row::periodicY), field("periodz", &Row::periodicZ),
    };
    static_assert(sizeOf(fields) == 56);
};

/// A bin of a user-defined size distribution.
struct STwoDoublesType
{
    struct Row
    {
        double size;
        double share;
    };
    static constexpr std::tuple fields{
        field("first", &Row::size),   // factor of a radius or of a volume, as the law says
        field("second", &Row::share), // percent, that of all sizes up to this one
    };
    static_assert(sizeOf(fields) == 16);
};

/// A count by name.
struct SNameCountType
{
    struct Row
    {
        QString name;
        quint32 count;
    };
    static constexpr std::tuple fields{
        text<256>("name", &Row::name),
        field("count", &Row::count),
    };
    static_assert(sizeOf(fields) == 260);
};

struct SPointType
{
    struct Row
    {
        C3DPoint xyz;
    };
    static constexpr std::tuple fields{
        field("xyz", &Row::xyz), // in the unit of its dataset
    };
    static_assert(sizeOf(fields) == 24);
};

struct SQuaternionType
{
    struct Row
    {
        CQuaternion wxyz;
    };
    static constexpr std::tuple fields{
        field("wxyz", &Row::wxyz), // the scalar part comes first
    };
    static_assert(sizeOf(fields) == 32);
};

// ---------------------------------------------------------------- parameters of contact models and forces

/// A number by name.
struct SBasicCmpdType
{
    struct Row
    {
        std::string name;
        double value;
    };
    static constexpr std::tuple fields{
        text<256>("name", &Row::name),
        field("value", &Row::value),
    };
    static_assert(sizeOf(fields) == 264);
};

/// The value of a pair table with the pair. A plain number is the member `value`.
struct SNumberOfPair
{
    SNumberOfPair() = default;
    SNumberOfPair(double number) : value(number) {}
    operator double() const { return value; }

    double value = 0.0;
};
template <class TValue>
struct SPairRow : TValue
{
    std::string name1;
    std::string name2;
};

/// A number for a pair of materials.
struct SCohesionCmpdType
{
    using Row = SPairRow<SNumberOfPair>;
    static constexpr std::tuple fields{
        text<256>("name1", &Row::name1), // the smaller by its bytes
        text<256>("name2", &Row::name2), // the greater; a reader takes any order
        field("value", &SNumberOfPair::value),
    };
    static_assert(sizeOf(fields) == 520);
};

struct SHystereticCmpdInterType
{
    using Row = SPairRow<SHystereticInteraction>;
    static constexpr std::tuple fields{
        text<256>("name1", &Row::name1),                        // the smaller by its bytes
        text<256>("name2", &Row::name2),                        // the greater; a reader takes any order
        field("damping", &SHystereticInteraction::damping),     // factor
        field("stiffness", &SHystereticInteraction::stiffness), // factor from the normal to the tangential stiffness
    };
    static_assert(sizeOf(fields) == 528);
};

struct SEcmCmpdType
{
    using Row = SPairRow<SEdinburghPair>;
    static constexpr std::tuple fields{
        text<512>("name1", &Row::name1),                                // the smaller by its bytes
        text<512>("name2", &Row::name2),                                // the greater; a reader takes any order
        field("constPullOffForce", &SEdinburghPair::constPullOffForce), // N
        field("surfaceEnergy", &SEdinburghPair::surfaceEnergy),         // J/m^2
        field("contactPlasticityRatio", &SEdinburghPair::contactPlasticityRatio), // below 1
        field("slopeExponential", &SEdinburghPair::slopeExponential),             // exponent of the loading branch
        field("tensileExponential", &SEdinburghPair::tensileExponential),         // exponent of the adhesive branch
        field("tangentStiffMultiplier", &SEdinburghPair::tangentStiffMultiplier), // factor
    };
    static_assert(sizeOf(fields) == 1072);
};

struct SLeedsAdhesionCmpdType
{
    using Row = SPairRow<SLeedsPair>;
    static constexpr std::tuple fields{
        text<512>("name1", &Row::name1),                          // the smaller by its bytes
        text<512>("name2", &Row::name2),                          // the greater; a reader takes any order
        field("plasticStiffness", &SLeedsPair::plasticStiffness), // N/m
        field("elasticStiffness", &SLeedsPair::elasticStiffness), // N/m
        field("plasticAdhesiveStiffness", &SLeedsPair::plasticAdhesiveStiffness),       // N/m
        field("tangentialStiffness", &SLeedsPair::tangentialStiffness),                 // N/m
        field("initialAdhesiveForce", &SLeedsPair::initialAdhesiveForce),               // N
        field("initialAdhesivePlasticForce", &SLeedsPair::initialAdhesivePlasticForce), // N
    };
    static_assert(sizeOf(fields) == 1072);
};

/// Bond parameters of a pair of particle types.
struct SBondParamCmpdType
{
    struct Row : CBondParameters
    {
        QString key; ///< both names and what joins them
    };
    static constexpr std::tuple fields{
        text<512>("key", &Row::key),                     // both names, and what joins them
        field("normalStiffness", &Row::normalStiffness), // N/m^3
        field("shearStiffness", &Row::shearStiffness),   // N/m^3
        field("normalStrength", &Row::normalStrength),   // Pa
        field("shearStrength", &Row::shearStrength),     // Pa
        field("bondRadius", &Row::bondRadius),           // m
    };
    static_assert(sizeOf(fields) == 552);
};

/// A motion of a moving plane.
struct SMovingPlaneMotionCmpdType
{
    using Row = SMovingPlaneMotion;
    static constexpr std::tuple fields{
        field("velocity", &Row::velocity),   // m/s
        field("accel", &Row::acceleration),  // m/s^2
        field("startTime", &Row::startTime), // s
        field("endTime", &Row::endTime),     // s
    };
    static_assert(sizeOf(fields) == 32);
};

} // namespace HDF5DATATYPES
} // namespace NBrenmark
