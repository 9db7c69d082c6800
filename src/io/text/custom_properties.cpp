// The text of custom property values, by the names of the properties: numbers would change with the definitions.
#include "io/text/text_writer.h"
#include "properties/custom_property_data.h"

namespace NBrenmark {

void CTextWriter::writeCustomPropertyManager(const CCustomPropertyData& data)
{
    out.group("properties", [&] {
        for (const auto& list : data.lists)
            out.group(NText::segment(list->metaData().name), [&] { list->write(*this); });
    });
}

void CTextWriter::writeCustomPropertyData(const CCustomPropertyValueList& list)
{
    out.arrayHere(list.values, list.itemCount(), list.elementsPerItem());
}

} // namespace NBrenmark
