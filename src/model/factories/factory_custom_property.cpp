// Fills the values of one property of a new particle, and takes what a file holds for another number of elements.
#include "model/factories/factory_custom_property.h"

#include "properties/custom_property_data.h"
#include "visitors/file_visitor_reader.h"
#include "visitors/file_visitor_writer.h"

#include <algorithm>

namespace NBrenmark {

template <>
const CFactoryCustomPropertyRegistry& CFactoryCustomPropertyRegistry::instance()
{
    static const CFactoryCustomPropertyRegistry registry =
        of<CInitialValueCustomPropertyFactoryParam, CFixedValueCustomPropertyFactoryParam,
           CRandomValueCustomPropertyFactoryParam, CNormalDistCustomPropertyFactoryParam>();
    return registry;
}

/// Calls valueOf for each element of the item, in order; nothing if one of the three isn't there.
template <class TValueOf>
static void assignEach(const CCustomPropertyMetaData* property, quint32 item, CCustomPropertyValueList* outValues,
                       const TValueOf& valueOf)
{
    double* const out = property != nullptr && outValues != nullptr ? outValues->item(item) : nullptr;
    if (out == nullptr)
        return;
    for (unsigned int element = 0; element < outValues->elementsPerItem(); ++element)
        out[element] = valueOf(element);
}

static quint32 unitsTypeOf(const CCustomPropertyMetaData* property)
{
    return property != nullptr ? property->unitsType : noQuantity;
}

/// The property's name, numbered from 1 where there is more than one element.
static QStringList elementNamesOf(const CCustomPropertyMetaData* property, std::size_t elements)
{
    const QString name = property != nullptr ? QString::fromStdString(property->name) : QString();
    if (elements == 1)
        return {name};
    QStringList names;
    for (std::size_t element = 1; element <= elements; ++element)
        names.append(QStringLiteral("%1 %2").arg(name).arg(element));
    return names;
}

// ---------------------------------------------------------------- fixed

void CFixedValueCustomPropertyFactoryParam::assign(quint32 item, CCustomPropertyValueList* outValues) const
{
    // A file may have held fewer values than the property has elements: the others stay initial.
    assignEach(property(), item, outValues, [this](unsigned int element) {
        return element < values.size() ? values[element] : property()->initialValue(element);
    });
}

void CFixedValueCustomPropertyFactoryParam::bind(const CCustomPropertyMetaData* definition)
{
    IFactoryCustomPropertyParam::bind(definition);
    values.clear();
    for (unsigned int element = 0; definition != nullptr && element < definition->numberOfElements; ++element)
        values.push_back(definition->initialValue(element));
}

bool CFixedValueCustomPropertyFactoryParam::takeStored(const std::vector<double>& stored)
{
    if (property() == nullptr)
        values.resize(stored.size());
    std::copy_n(stored.begin(), std::min(stored.size(), values.size()), values.begin());
    return stored.size() == values.size();
}

bool CFixedValueCustomPropertyFactoryParam::isBoolean() const
{
    return property() != nullptr && property()->dataType == eBooleanProperty;
}

bool CFixedValueCustomPropertyFactoryParam::setParamData(const IParamData& data)
{
    if (const auto* const bits = dynamic_cast<const CMultipleBooleanParamData*>(&data);
        isBoolean() && bits != nullptr) {
        values.assign(bits->values.begin(), bits->values.end());
        return true;
    }
    const auto* const numbers = dynamic_cast<const CMultipleFloatingPointNumberParamData*>(&data);
    if (isBoolean() || numbers == nullptr)
        return false;
    values = numbers->values;
    return true;
}

std::unique_ptr<IParamData> CFixedValueCustomPropertyFactoryParam::paramData() const
{
    if (isBoolean()) {
        auto bits = std::make_unique<CMultipleBooleanParamData>();
        for (const double value : values)
            bits->values.push_back(value != 0.0);
        bits->elementNames = elementNamesOf(property(), values.size());
        return bits;
    }
    auto numbers = std::make_unique<CMultipleFloatingPointNumberParamData>();
    numbers->values = values;
    numbers->elementNames = elementNamesOf(property(), values.size());
    numbers->unitsType = unitsTypeOf(property());
    return numbers;
}

std::type_index CFixedValueCustomPropertyFactoryParam::paramDataType() const
{
    return isBoolean() ? typeid(CMultipleBooleanParamData) : typeid(CMultipleFloatingPointNumberParamData);
}

// ---------------------------------------------------------------- random

void CRandomValueCustomPropertyFactoryParam::assign(quint32 item, CCustomPropertyValueList* outValues) const
{
    assignEach(property(), item, outValues, [this](unsigned int) { return distribution.sample(); });
}

void CRandomValueCustomPropertyFactoryParam::bind(const CCustomPropertyMetaData* definition)
{
    IFactoryCustomPropertyParam::bind(definition);
    if (definition == nullptr)
        return;
    distribution.min = definition->initialValue(0) - 1.0;
    distribution.max = definition->initialValue(0) + 1.0;
}

void CRandomValueCustomPropertyFactoryParam::takeRecord(const CRandomParamData& data)
{
    distribution.min = data.min;
    distribution.max = data.max;
}

CRandomParamData CRandomValueCustomPropertyFactoryParam::record() const
{
    CRandomParamData data;
    data.min = distribution.min;
    data.max = distribution.max;
    data.unitsType = unitsTypeOf(property());
    return data;
}

// ---------------------------------------------------------------- normal

void CNormalDistCustomPropertyFactoryParam::assign(quint32 item, CCustomPropertyValueList* outValues) const
{
    assignEach(property(), item, outValues, [this](unsigned int) { return distribution.sample(); });
}

void CNormalDistCustomPropertyFactoryParam::bind(const CCustomPropertyMetaData* definition)
{
    IFactoryCustomPropertyParam::bind(definition);
    if (definition == nullptr)
        return;
    distribution.mean = definition->initialValue(0);
    distribution.deviation = definition->initialValue(0) * 0.5;
    distribution.capped = false;
}

void CNormalDistCustomPropertyFactoryParam::takeRecord(const CFloatingPointNormalDistParamData& data)
{
    distribution.mean = data.mean;
    distribution.deviation = data.deviation;
}

CFloatingPointNormalDistParamData CNormalDistCustomPropertyFactoryParam::record() const
{
    CFloatingPointNormalDistParamData data;
    data.mean = distribution.mean;
    data.deviation = distribution.deviation;
    data.unitsType = unitsTypeOf(property());
    return data;
}

// ---------------------------------------------------------------- visitors

void CFixedValueCustomPropertyFactoryParam::read(IFileVisitorReader& v)
{
    v.readFixedValueCustomPropertyFactoryParam(*this);
}

void CFixedValueCustomPropertyFactoryParam::write(IFileVisitorWriter& v) const
{
    v.writeFixedValueCustomPropertyFactoryParam(*this);
}

void CRandomValueCustomPropertyFactoryParam::read(IFileVisitorReader& v)
{
    v.readRandomValueCustomPropertyFactoryParam(*this);
}

void CRandomValueCustomPropertyFactoryParam::write(IFileVisitorWriter& v) const
{
    v.writeRandomValueCustomPropertyFactoryParam(*this);
}

void CNormalDistCustomPropertyFactoryParam::read(IFileVisitorReader& v)
{
    v.readNormalDistCustomPropertyFactoryParam(*this);
}

void CNormalDistCustomPropertyFactoryParam::write(IFileVisitorWriter& v) const
{
    v.writeNormalDistCustomPropertyFactoryParam(*this);
}

} // namespace NBrenmark
