// Cuts a definition to the elements that a deck can hold, and gives each one an id of the process.
#include "properties/custom_property_meta_data.h"

#include <algorithm>
#include <atomic>

namespace NBrenmark {

static unsigned int nextId()
{
    static std::atomic<unsigned int> id{0};
    return id++;
}

CCustomPropertyMetaData::CCustomPropertyMetaData(const std::string& name, unsigned int dataType,
                                                 unsigned int numberOfElements, unsigned int unitsType)
    : CCustomPropertyMetaData(name, dataType, numberOfElements, unitsType, std::vector<double>())
{}

CCustomPropertyMetaData::CCustomPropertyMetaData(const std::string& name, unsigned int dataType,
                                                 unsigned int numberOfElements, unsigned int unitsType,
                                                 const std::vector<double>& initialValues)
    : name(name),
      dataType(dataType),
      numberOfElements(std::min(numberOfElements, mostElements)),
      unitsType(unitsType),
      id(nextId())
{
    if (dataType == eBooleanProperty) {
        for (const double value : initialValues)
            initialFlags.push_back(value != 0.0);
        initialFlags.resize(this->numberOfElements, false);
    }
    else {
        this->initialValues = initialValues;
        this->initialValues.resize(this->numberOfElements, 0.0);
    }
}

CCustomPropertyMetaData::CCustomPropertyMetaData(const std::string& name, unsigned int dataType,
                                                 unsigned int numberOfElements, unsigned int unitsType,
                                                 const std::vector<bool>& initialFlags)
    : CCustomPropertyMetaData(name, dataType, numberOfElements, unitsType,
                              std::vector<double>(initialFlags.begin(), initialFlags.end()))
{}

double CCustomPropertyMetaData::initialValue(unsigned int element) const
{
    if (dataType == eBooleanProperty)
        return element < initialFlags.size() && initialFlags[element] ? 1.0 : 0.0;
    return element < initialValues.size() ? initialValues[element] : 0.0;
}

bool CCustomPropertyMetaData::sameShape(const CCustomPropertyMetaData& other) const
{
    return dataType == other.dataType && numberOfElements == other.numberOfElements && unitsType == other.unitsType;
}

} // namespace NBrenmark
