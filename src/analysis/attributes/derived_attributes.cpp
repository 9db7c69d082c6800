// What derived attributes and those of custom properties make of the values that they rest on.
#include "analysis/attributes/derived_attributes.h"

#include "model/geometry/geometry_group.h"
#include "model/particle_type.h"
#include "results/timestep_data.h"

#include <algorithm>
#include <cmath>

namespace NBrenmark::NAttributes {

CAttributeVectorComponent::CAttributeVectorComponent(const CAttribute& parent, quint32 component)
    : CAttribute(parent.name + QLatin1Char(' ') + QLatin1Char("XYZ"[component]), eScalarValue, parent),
      component(component)
{}

void CAttributeVectorComponent::derive(const double* parentRow, quint32, double* out) const
{
    *out = parentRow[component];
}

CAttributeQuaternionComponent::CAttributeQuaternionComponent(const CAttribute& parent, quint32 component)
    : CAttribute(parent.name + QLatin1Char(' ') + QLatin1Char("WXYZ"[component]), eScalarValue, parent),
      component(component)
{}

void CAttributeQuaternionComponent::derive(const double* parentRow, quint32, double* out) const
{
    *out = parentRow[component];
}

CAttributeMagnitude::CAttributeMagnitude(const CAttribute& parent)
    : CAttribute(parent.name + QLatin1String(" Magnitude"), eScalarValue, parent)
{}

/// The root of the sum of squares.
void CAttributeMagnitude::derive(const double* parentRow, quint32 parentWidth, double* out) const
{
    double squares = 0.0;
    for (quint32 i = 0; i < parentWidth; ++i)
        squares += parentRow[i] * parentRow[i];
    *out = std::sqrt(squares);
}

// ---------------------------------------------------------------- custom properties

CAttributeCustomProperty::CAttributeCustomProperty(const CCustomPropertyMetaData& property, EAttributeOwner owner)
    : CAttribute(QString::fromStdString(property.name), eScalarValue, property.unitsType, owner, {})
{
    elementCount = property.numberOfElements;
}

template <class TOwner>
bool CAttributeCustomProperty::readFrom(EAttributeOwner kind, const TOwner& owner, const SAttributeRows& rows,
                                        double* out) const
{
    if (owners != kind)
        return false;
    const std::string wanted = name.toStdString();
    for (const auto& list : owner.lists) {
        if (list->metaData().name != wanted || list->elementsPerItem() != elementCount)
            continue;
        if (std::any_of(rows.begin(), rows.end(), [&](quint32 row) { return row >= list->itemCount(); }))
            return false;
        for (const quint32 row : rows)
            out = std::copy_n(list->values.data() + std::size_t(row) * elementCount, elementCount, out);
        return true;
    }
    return false; // tentative: there are no values yet
}

bool CAttributeCustomProperty::read(const CTimestepData& owner, const SAttributeRows& rows, double* out) const
{
    return readFrom(eSimulationAttribute, owner.simulationProperties, rows, out);
}

bool CAttributeCustomProperty::read(const CContactsBase& owner, const SAttributeRows& rows, double* out) const
{
    return readFrom(eContactAttribute, owner.customProperties, rows, out);
}

bool CAttributeCustomProperty::read(const CParticleType& owner, const SAttributeRows& rows, double* out) const
{
    return readFrom(eParticleAttribute, owner.customProperties, rows, out);
}

bool CAttributeCustomProperty::read(const CGeometryGroup& owner, const SAttributeRows& rows, double* out) const
{
    return readFrom(eGeometryAttribute, owner.customProperties, rows, out);
}

CAttributeCustomPropertyComponent::CAttributeCustomPropertyComponent(const CAttribute& parent, quint32 element)
    : CAttribute(parent.name + QLatin1Char(' ') + QString::number(element + 1), eScalarValue, parent), element(element)
{}

void CAttributeCustomPropertyComponent::derive(const double* parentRow, quint32, double* out) const
{
    *out = parentRow[element];
}

} // namespace NBrenmark::NAttributes
