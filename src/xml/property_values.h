#pragma once
// Custom properties in documents: how their names become names of elements and attributes, and the values of one item.

#include "xml/xml_attributes.h"
#include "xml/xml_output.h"

namespace NBrenmark {

class CCustomPropertyData;

/// A name as part of a tag: blanks become underscores, what is neither letter, digit nor underscore goes.
QString tagPart(const std::string& name);

/// The values of an item as attributes. Of properties whose names become one the first is written; the others are
/// reported.
void writeValues(CXmlOutput& out, const CCustomPropertyData& data, unsigned int item);
/// Gives an item the values that its attributes hold; the others stay.
void readValues(const CXmlAttributes& attributes, CCustomPropertyData& data, unsigned int item);

} // namespace NBrenmark
