#pragma once
// The velocity that a factory gives to a new particle, m/s.

#include "model/factories/factory_vectors.h"

namespace NBrenmark {

class IFactoryVelocity : public IFactoryParameter
{
public:
    using Family = IFactoryVelocity;
    static constexpr quint32 quantity = velocityQuantity;

    virtual std::unique_ptr<IFactoryVelocity> clone() const = 0;
    virtual C3DVector sample() const = 0;
};

class CFixedFactoryVelocity : public CFixedVectorKind<CFixedFactoryVelocity, IFactoryVelocity>
{
public:
    void read(IFileVisitorReader& visitor) override;
    void write(IFileVisitorWriter& visitor) const override;
};

/// On the straight line between the two velocities; from rest to the one if the other is zero.
class CLinearFactoryVelocity : public CLinearVectorKind<CLinearFactoryVelocity, IFactoryVelocity>
{
public:
    C3DVector sample() const override;
    void read(IFileVisitorReader& visitor) override;
    void write(IFileVisitorWriter& visitor) const override;
};

class CRandomFactoryVelocity : public CRandomVectorKind<CRandomFactoryVelocity, IFactoryVelocity>
{
public:
    void read(IFileVisitorReader& visitor) override;
    void write(IFileVisitorWriter& visitor) const override;
};

class CNormalFactoryVelocity : public CNormalVectorKind<CNormalFactoryVelocity, IFactoryVelocity>
{
public:
    void read(IFileVisitorReader& visitor) override;
    void write(IFileVisitorWriter& visitor) const override;
};

/// The direction turned by up to sprayAngle about an axis in the y-z plane.
class CSprayFactoryVelocity
    : public CFactoryParameterKind<CSprayFactoryVelocity, CEditedAs<CSprayVelocityParamData, IFactoryVelocity>>
{
public:
    static constexpr const char* word = "spray";

    C3DVector sample() const override;
    void read(IFileVisitorReader& visitor) override;
    void write(IFileVisitorWriter& visitor) const override;

    CNormalDistribution magnitude;
    C3DVector direction{1.0, 0.0, 0.0};
    double sprayAngle = 1.047; ///< rad

protected:
    void takeRecord(const CSprayVelocityParamData& data) override;
    CSprayVelocityParamData record() const override;
};

using CFactoryVelocityRegistry = CKindRegistry<IFactoryVelocity>;
template <>
const CFactoryVelocityRegistry& CFactoryVelocityRegistry::instance();

} // namespace NBrenmark
