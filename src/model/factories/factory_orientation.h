#pragma once
// How a factory turns a new particle.

#include "maths/quaternion.h"
#include "model/factories/factory_parameter.h"

namespace NBrenmark {

class IFactoryOrientation : public IFactoryParameter
{
public:
    using Family = IFactoryOrientation;

    virtual std::unique_ptr<IFactoryOrientation> clone() const = 0;
    virtual CQuaternion sample() const = 0;
};

class CFixedFactoryOrientation
    : public CFactoryParameterKind<CFixedFactoryOrientation, CEditedAs<CFixedOrientationParamData, IFactoryOrientation>>
{
public:
    static constexpr const char* word = "fixed";

    CQuaternion sample() const override { return CQuaternion::fromMatrix(orientation); }
    void read(IFileVisitorReader& visitor) override;
    void write(IFileVisitorWriter& visitor) const override;

    /// The turn as files hold it. What was taken comes back to the last bit while the matrix is still its
    /// own: a quaternion that goes through a matrix comes back rounded.
    CQuaternion quaternion() const;
    void setQuaternion(const CQuaternion& turn);

    C3DMatrix orientation;

protected:
    void takeRecord(const CFixedOrientationParamData& data) override { orientation = data.orientation; }
    CFixedOrientationParamData record() const override
    {
        CFixedOrientationParamData data;
        data.orientation = orientation;
        return data;
    }

private:
    CQuaternion taken;
};

/// Any angle about an axis of the first octant. There is nothing to store.
class CRandomFactoryOrientation
    : public CFactoryParameterKind<CRandomFactoryOrientation, CNothingToEdit<IFactoryOrientation>>
{
public:
    static constexpr const char* word = "random";

    CQuaternion sample() const override;
    void read(IFileVisitorReader&) override {}
    void write(IFileVisitorWriter&) const override {}
};

using CFactoryOrientationRegistry = CKindRegistry<IFactoryOrientation>;
template <>
const CFactoryOrientationRegistry& CFactoryOrientationRegistry::instance();

} // namespace NBrenmark
