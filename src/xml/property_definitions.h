#pragma once
// The definitions of the custom properties of one owner, for the elements that they are children of.

#include "xml/xml_output.h"

namespace NBrenmark {

class CCustomPropertyManager;

/// Writes nothing for an owner without properties. \param manager  may be null
void writePropertyDefinitions(CXmlOutput& out, const CCustomPropertyManager* manager);

} // namespace NBrenmark
