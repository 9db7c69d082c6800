#include "io/hdf5/types.h"

#include <cstddef>

namespace NBrenmark {
namespace HDF5DATATYPES {

// One insertion for each kind of member.

static void insertNumber(H5::CompType& type, const char* name, std::size_t offset)
{
    type.insertMember(name, offset, H5::PredType::NATIVE_DOUBLE);
}

static void insertCount(H5::CompType& type, const char* name, std::size_t offset)
{
    type.insertMember(name, offset, H5::PredType::NATIVE_UINT);
}

static void insertFlag(H5::CompType& type, const char* name, std::size_t offset)
{
    type.insertMember(name, offset, H5::PredType::NATIVE_UCHAR);
}

static void insertNumbers(H5::CompType& type, const char* name, std::size_t offset, hsize_t count)
{
    type.insertMember(name, offset, H5::ArrayType(H5::PredType::NATIVE_DOUBLE, 1, &count));
}

/// Fixed size, null terminated.
static void insertText(H5::CompType& type, const char* name, std::size_t offset, std::size_t bytes)
{
    type.insertMember(name, offset, H5::StrType(H5::PredType::C_S1, bytes));
}

SAngVelAndPosType::SAngVelAndPosType() : CompType(sizeof(SRecord))
{
    insertNumbers(*this, "angvel", offsetof(SRecord, angvel), 3);
    insertNumbers(*this, "poa", offsetof(SRecord, poa), 3);
}

SBasicCmpdType::SBasicCmpdType() : CompType(sizeof(SRecord))
{
    insertText(*this, "name", offsetof(SRecord, name), sizeof SRecord::name);
    insertNumber(*this, "value", offsetof(SRecord, value));
}

SBondParamCmpdType::SBondParamCmpdType() : CompType(sizeof(SRecord))
{
    insertText(*this, "key", offsetof(SRecord, key), sizeof SRecord::key);
    insertNumber(*this, "normalStiffness", offsetof(SRecord, normalStiffness));
    insertNumber(*this, "shearStiffness", offsetof(SRecord, shearStiffness));
    insertNumber(*this, "normalStrength", offsetof(SRecord, normalStrength));
    insertNumber(*this, "shearStrength", offsetof(SRecord, shearStrength));
    insertNumber(*this, "bondRadius", offsetof(SRecord, bondRadius));
}

SCohesionCmpdType::SCohesionCmpdType() : CompType(sizeof(SRecord))
{
    insertText(*this, "name1", offsetof(SRecord, name1), sizeof SRecord::name1);
    insertText(*this, "name2", offsetof(SRecord, name2), sizeof SRecord::name2);
    insertNumber(*this, "value", offsetof(SRecord, value));
}

SDomainType::SDomainType() : CompType(sizeof(SRecord))
{
    insertNumbers(*this, "min", offsetof(SRecord, min), 3);
    insertNumbers(*this, "max", offsetof(SRecord, max), 3);
    insertFlag(*this, "periodx", offsetof(SRecord, periodx));
    insertFlag(*this, "periody", offsetof(SRecord, periody));
    insertFlag(*this, "periodz", offsetof(SRecord, periodz));
}

SEcmCmpdType::SEcmCmpdType() : CompType(sizeof(SRecord))
{
    insertText(*this, "name1", offsetof(SRecord, name1), sizeof SRecord::name1);
    insertText(*this, "name2", offsetof(SRecord, name2), sizeof SRecord::name2);
    insertNumber(*this, "constPullOffForce", offsetof(SRecord, constPullOffForce));
    insertNumber(*this, "surfaceEnergy", offsetof(SRecord, surfaceEnergy));
    insertNumber(*this, "contactPlasticityRatio", offsetof(SRecord, contactPlasticityRatio));
    insertNumber(*this, "slopeExponential", offsetof(SRecord, slopeExponential));
    insertNumber(*this, "tensileExponential", offsetof(SRecord, tensileExponential));
    insertNumber(*this, "tangentStiffMultiplier", offsetof(SRecord, tangentStiffMultiplier));
}

SHystereticCmpdInterType::SHystereticCmpdInterType() : CompType(sizeof(SRecord))
{
    insertText(*this, "name1", offsetof(SRecord, name1), sizeof SRecord::name1);
    insertText(*this, "name2", offsetof(SRecord, name2), sizeof SRecord::name2);
    insertNumber(*this, "damping", offsetof(SRecord, damping));
    insertNumber(*this, "stiffness", offsetof(SRecord, stiffness));
}

SInteractionType::SInteractionType() : CompType(sizeof(SRecord))
{
    insertText(*this, "key", offsetof(SRecord, key), sizeof SRecord::key);
    insertNumber(*this, "restitution", offsetof(SRecord, restitution));
    insertNumber(*this, "staticFriction", offsetof(SRecord, staticFriction));
    insertNumber(*this, "rollingFriction", offsetof(SRecord, rollingFriction));
}

SLeedsAdhesionCmpdType::SLeedsAdhesionCmpdType() : CompType(sizeof(SRecord))
{
    insertText(*this, "name1", offsetof(SRecord, name1), sizeof SRecord::name1);
    insertText(*this, "name2", offsetof(SRecord, name2), sizeof SRecord::name2);
    insertNumber(*this, "plasticStiffness", offsetof(SRecord, plasticStiffness));
    insertNumber(*this, "elasticStiffness", offsetof(SRecord, elasticStiffness));
    insertNumber(*this, "plasticAdhesiveStiffness", offsetof(SRecord, plasticAdhesiveStiffness));
    insertNumber(*this, "tangentialStiffness", offsetof(SRecord, tangentialStiffness));
    insertNumber(*this, "initialAdhesiveForce", offsetof(SRecord, initialAdhesiveForce));
    insertNumber(*this, "initialAdhesivePlasticForce", offsetof(SRecord, initialAdhesivePlasticForce));
}

SMaterialType::SMaterialType() : CompType(sizeof(SRecord))
{
    insertText(*this, "name", offsetof(SRecord, name), sizeof SRecord::name);
    insertNumber(*this, "poisson", offsetof(SRecord, poisson));
    insertNumber(*this, "shearMod", offsetof(SRecord, shearMod));
    insertNumber(*this, "density", offsetof(SRecord, density));
    insertNumber(*this, "workFunction", offsetof(SRecord, workFunction));
    insertCount(*this, "type", offsetof(SRecord, type));
}

namespace v300004 {

SMaterialType::SMaterialType() : CompType(sizeof(SRecord))
{
    insertText(*this, "name", offsetof(SRecord, name), sizeof SRecord::name);
    insertNumber(*this, "poisson", offsetof(SRecord, poisson));
    insertNumber(*this, "shearMod", offsetof(SRecord, shearMod));
    insertNumber(*this, "density", offsetof(SRecord, density));
    insertNumber(*this, "workFunction", offsetof(SRecord, workFunction));
}

} // namespace v300004

SMovingPlaneMotionCmpdType::SMovingPlaneMotionCmpdType() : CompType(sizeof(SRecord))
{
    insertNumber(*this, "velocity", offsetof(SRecord, velocity));
    insertNumber(*this, "accel", offsetof(SRecord, accel));
    insertNumber(*this, "startTime", offsetof(SRecord, startTime));
    insertNumber(*this, "endTime", offsetof(SRecord, endTime));
}

SNameCountType::SNameCountType() : CompType(sizeof(SRecord))
{
    insertText(*this, "name", offsetof(SRecord, name), sizeof SRecord::name);
    insertCount(*this, "count", offsetof(SRecord, count));
}

SPointType::SPointType() : CompType(sizeof(SRecord)) { insertNumbers(*this, "xyz", offsetof(SRecord, xyz), 3); }

SQuaternionType::SQuaternionType() : CompType(sizeof(SRecord))
{
    insertNumbers(*this, "wxyz", offsetof(SRecord, wxyz), 4);
}

SSphereType::SSphereType() : CompType(sizeof(SRecord))
{
    insertText(*this, "name", offsetof(SRecord, name), sizeof SRecord::name);
    insertNumber(*this, "contactRadius", offsetof(SRecord, contactRadius));
    insertNumber(*this, "physicalRadius", offsetof(SRecord, physicalRadius));
    insertNumbers(*this, "pos", offsetof(SRecord, pos), 3);
}

STwoDoublesType::STwoDoublesType() : CompType(sizeof(SRecord))
{
    insertNumber(*this, "first", offsetof(SRecord, first));
    insertNumber(*this, "second", offsetof(SRecord, second));
}

} // namespace HDF5DATATYPES
} // namespace NBrenmark
