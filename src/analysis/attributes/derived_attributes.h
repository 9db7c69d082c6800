#pragma once
// Attributes that are made of others: components, magnitudes, all of a value in one. And those of custom properties.

#include "analysis/attributes/attribute.h"

namespace NBrenmark {
class CCustomPropertyMetaData;
}

namespace NBrenmark::NAttributes {

/// Component X, Y or Z of a vector.
class CAttributeVectorComponent : public CAttribute
{
public:
    CAttributeVectorComponent(const CAttribute& parent, quint32 component);

protected:
    void derive(const double* parentRow, quint32 parentWidth, double* out) const override;

private:
    const quint32 component;
};

/// Length of a vector.
class CAttributeMagnitude : public CAttribute
{
public:
    explicit CAttributeMagnitude(const CAttribute& parent);

protected:
    void derive(const double* parentRow, quint32 parentWidth, double* out) const override;
};

/// The whole value, for who shows it beside its parts.
template <EAttributeValueKind kind>
class CAttributeAll : public CAttribute
{
public:
    explicit CAttributeAll(const CAttribute& parent) : CAttribute(parent.name + QLatin1String(" All"), kind, parent) {}

protected:
    void derive(const double* parentRow, quint32 parentWidth, double* out) const override
    {
        std::copy(parentRow, parentRow + parentWidth, out);
    }
};
using CAttributeVectorAll = CAttributeAll<eVectorValue>;
using CAttributeQuaternionAll = CAttributeAll<eQuaternionValue>;

/// Component W, X, Y or Z of a quaternion. A table has none: who asks for one makes it.
class CAttributeQuaternionComponent : public CAttribute
{
public:
    CAttributeQuaternionComponent(const CAttribute& parent, quint32 component);

protected:
    void derive(const double* parentRow, quint32 parentWidth, double* out) const override;

private:
    const quint32 component;
};

/// A custom property of one kind of owner, with all of its elements.
class CAttributeCustomProperty : public CAttribute
{
public:
    /// \param owner  an EAttributeOwner with properties: particles, contacts, geometry or the simulation
    CAttributeCustomProperty(const CCustomPropertyMetaData& property, EAttributeOwner owner);

protected:
    bool read(const CTimestepData& owner, const SAttributeRows& rows, double* out) const override;
    bool read(const CContactsBase& owner, const SAttributeRows& rows, double* out) const override;
    bool read(const CParticleType& owner, const SAttributeRows& rows, double* out) const override;
    bool read(const CGeometryGroup& owner, const SAttributeRows& rows, double* out) const override;
    using CAttribute::read;

private:
    template <class TOwner>
    bool readFrom(EAttributeOwner kind, const TOwner& owner, const SAttributeRows& rows, double* out) const;
};

/// One element of a custom property of several.
class CAttributeCustomPropertyComponent : public CAttribute
{
public:
    CAttributeCustomPropertyComponent(const CAttribute& parent, quint32 element);

protected:
    void derive(const double* parentRow, quint32 parentWidth, double* out) const override;

private:
    const quint32 element;
};

/// The elements of a custom property as one vector: its length.
class CAttributeCustomPropertyMagnitude : public CAttributeMagnitude
{
public:
    using CAttributeMagnitude::CAttributeMagnitude;
};

} // namespace NBrenmark::NAttributes
