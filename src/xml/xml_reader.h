#pragma once
// Gives an object the attributes of one element. Which object an element goes to is found by the serialisers of the
// lists: see serialisers.h.

#include "core/xml_io_options.h"
#include "visitors/file_visitor_reader.h"
#include "xml/xml_form.h"

namespace NBrenmark {

// clang-format off
#define BRENMARK_XML_READS_element(declaration) declaration;
#define BRENMARK_XML_READS_list(declaration) declaration {}
#define BRENMARK_XML_READS_nothing(declaration) declaration {}
// clang-format on

class CXmlReader : public IFileVisitorReader
{
public:
    /// \param attributes  of the element; not owned
    CXmlReader(const CXmlAttributes& attributes, const CXmlIoOptions& options)
        : attributes(attributes), options(options), form(attributes)
    {}

#define STORED(operation, type, hdf5Read, hdf5Write, legacyRead, legacyWrite, inXml)                                   \
    BRENMARK_XML_READS_##inXml(void read##operation(type&) override)
#define LEGACY(operation, type, column)                                                                                \
    void read##operation(NLegacySupport::type&) override {}
#include "visitors/stored_classes.def"

    /// Whether an object knew the tag: parameters of models come in elements of several tags.
    bool isTaken = false;

private:
    CXmlFormReader& in() { return form; }
    /// Whether the element has the tag; it is taken then.
    bool takes(const char* tag)
    {
        const bool isIt = attributes.is(tag);
        isTaken = isTaken || isIt;
        return isIt;
    }

    const CXmlAttributes& attributes;
    const CXmlIoOptions& options;
    CXmlFormReader form;
};

} // namespace NBrenmark
