#pragma once
// The kinds that linear and angular velocities share: their fields and, but for the linear kind,
// their rules.

#include "maths/vector.h"
#include "model/factories/distributions.h"
#include "model/factories/factory_parameter.h"

namespace NBrenmark {

/// Of unit length and any direction; the short vector itself if the draw lies at the origin.
C3DVector randomDirection();

/// v brought to unit length, unless its squared length counts as zero.
C3DVector unitUnlessZero(const C3DVector& v);

/// \tparam TFamily  with the number of its quantity as a static member
template <class TKind, class TFamily>
class CFixedVectorKind : public CFactoryParameterKind<TKind, CEditedAs<CFixedVelocityParamData, TFamily>>
{
public:
    static constexpr const char* word = "fixed";

    C3DVector sample() const override { return value; }

    C3DVector value;

protected:
    void takeRecord(const CFixedVelocityParamData& data) override { value = data.value; }
    CFixedVelocityParamData record() const override
    {
        CFixedVelocityParamData data;
        data.value = value;
        data.unitsType = TFamily::quantity;
        return data;
    }
};

/// Between two vectors; each family has its own rule.
template <class TKind, class TFamily>
class CLinearVectorKind : public CFactoryParameterKind<TKind, CEditedAs<CLinearVelocityParamData, TFamily>>
{
public:
    static constexpr const char* word = "linear";

    C3DVector startVelocity;
    C3DVector endVelocity;

protected:
    void takeRecord(const CLinearVelocityParamData& data) override
    {
        startVelocity = data.startVelocity;
        endVelocity = data.endVelocity;
    }
    CLinearVelocityParamData record() const override
    {
        CLinearVelocityParamData data;
        data.startVelocity = startVelocity;
        data.endVelocity = endVelocity;
        data.unitsType = TFamily::quantity;
        return data;
    }
};

/// Any direction, and a random magnitude.
template <class TKind, class TFamily>
class CRandomVectorKind : public CFactoryParameterKind<TKind, CEditedAs<CRandomParamData, TFamily>>
{
public:
    static constexpr const char* word = "random";

    C3DVector sample() const override
    {
        const C3DVector direction = randomDirection(); // drawn before the magnitude
        return direction * magnitude.sample();
    }

    CRandomDistribution magnitude{0.5, 1.0};

protected:
    void takeRecord(const CRandomParamData& data) override
    {
        magnitude.min = data.min;
        magnitude.max = data.max;
    }
    CRandomParamData record() const override
    {
        CRandomParamData data;
        data.min = magnitude.min;
        data.max = magnitude.max;
        data.unitsType = TFamily::quantity;
        return data;
    }
};

/// One direction, and a magnitude by the normal law.
template <class TKind, class TFamily>
class CNormalVectorKind : public CFactoryParameterKind<TKind, CEditedAs<CNormalVelocityParamData, TFamily>>
{
public:
    static constexpr const char* word = "normal";

    C3DVector sample() const override { return unitUnlessZero(direction) * magnitude.sample(); }

    CNormalDistribution magnitude;
    C3DVector direction{1.0, 0.0, 0.0};

protected:
    void takeRecord(const CNormalVelocityParamData& data) override
    {
        direction = data.direction;
        magnitude.mean = data.mean;
        magnitude.deviation = data.deviation;
    }
    CNormalVelocityParamData record() const override
    {
        CNormalVelocityParamData data;
        data.direction = direction;
        data.mean = magnitude.mean;
        data.deviation = magnitude.deviation;
        data.unitsType = TFamily::quantity;
        return data;
    }
};

} // namespace NBrenmark
