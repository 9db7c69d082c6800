#pragma once
// Custom properties in documents: how their names become names of elements and attributes, and the values of one item.

#include "xml/xml_attributes.h"
#include "xml/xml_output.h"

#include <QStringList>

#include <vector>

namespace NBrenmark {

class CCustomPropertyData;
class CCustomPropertyManager;

/// A name as part of a tag: blanks become underscores, what is neither letter, digit nor underscore goes.
QString tagPart(const std::string& name);

/// The values of single items as attributes, named once for all data of an owner.
class CXmlValues
{
public:
    CXmlValues() = default;
    /// Of properties whose names become one the first has it; the others have no values in documents.
    explicit CXmlValues(const CCustomPropertyManager* manager);

    void write(CXmlOutput& out, const CCustomPropertyData& data, unsigned int item) const;
    /// Gives an item the values that its attributes hold; the others stay.
    void read(const CXmlAttributes& attributes, CCustomPropertyData& data, unsigned int item) const;

private:
    std::vector<QStringList> names; ///< by property and element; none for a property without values
};

} // namespace NBrenmark
