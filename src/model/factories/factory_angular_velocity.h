#pragma once
// The angular velocity that a factory gives to a new particle, rad/s.

#include "model/factories/factory_vectors.h"

namespace NBrenmark {

class IFactoryAngVel : public IFactoryParameter
{
public:
    using Family = IFactoryAngVel;
    static constexpr quint32 quantity = angularVelocityQuantity;

    virtual std::unique_ptr<IFactoryAngVel> clone() const = 0;
    virtual C3DVector sample() const = 0;
};

class CFixedFactoryAngVel : public CFixedVectorKind<CFixedFactoryAngVel, IFactoryAngVel>
{
public:
    void read(IFileVisitorReader& visitor) override;
    void write(IFileVisitorWriter& visitor) const override;
};

/// Turned from the end velocity towards the start velocity and as long as that, by one random share
/// for both angle and length; from rest to the one if the other is zero.
class CLinearFactoryAngVel : public CLinearVectorKind<CLinearFactoryAngVel, IFactoryAngVel>
{
public:
    C3DVector sample() const override;
    void read(IFileVisitorReader& visitor) override;
    void write(IFileVisitorWriter& visitor) const override;
};

class CRandomFactoryAngVel : public CRandomVectorKind<CRandomFactoryAngVel, IFactoryAngVel>
{
public:
    void read(IFileVisitorReader& visitor) override;
    void write(IFileVisitorWriter& visitor) const override;
};

class CNormalFactoryAngVel : public CNormalVectorKind<CNormalFactoryAngVel, IFactoryAngVel>
{
public:
    void read(IFileVisitorReader& visitor) override;
    void write(IFileVisitorWriter& visitor) const override;
};

using CFactoryAngVelRegistry = CKindRegistry<IFactoryAngVel>;
template <>
const CFactoryAngVelRegistry& CFactoryAngVelRegistry::instance();

} // namespace NBrenmark
