#pragma once
// The definition of one custom property.

#include <string>
#include <vector>

namespace NBrenmark {

enum ECustomPropertyType : unsigned int
{
    eDoubleProperty = 0,
    eBooleanProperty = 1
};

class CCustomPropertyMetaData
{
public:
    static constexpr unsigned int mostElements = 256;

    /// Zero initial values. More than 256 elements are cut to 256 in every constructor.
    CCustomPropertyMetaData(const std::string& name, unsigned int dataType, unsigned int numberOfElements,
                            unsigned int unitsType);
    CCustomPropertyMetaData(const std::string& name, unsigned int dataType, unsigned int numberOfElements,
                            unsigned int unitsType, const std::vector<double>& initialValues);
    CCustomPropertyMetaData(const std::string& name, unsigned int dataType, unsigned int numberOfElements,
                            unsigned int unitsType, const std::vector<bool>& initialFlags);
    virtual ~CCustomPropertyMetaData() = default;

    /// The initial value of an element whatever the type: flags are 0.0 and 1.0.
    double initialValue(unsigned int element) const;
    /// Same type, elements and units: what decides whether two definitions of one name clash.
    bool sameShape(const CCustomPropertyMetaData& other) const;

    std::string name; ///< letters, round brackets, blanks and hyphens
    unsigned int dataType;
    unsigned int numberOfElements;
    unsigned int unitsType;            ///< the quantity
    std::vector<double> initialValues; ///< one for each element of a double property
    std::vector<bool> initialFlags;    ///< one for each element of a boolean property
    unsigned int id;                   ///< goes up with every construction in the process
    unsigned int referenceCount = 0;   ///< models and other users that depend on the property
};

} // namespace NBrenmark
