#pragma once
// Writes a definition or a timestep as a document. Of a class with an element of its own the slot writes attributes
// and children into the element that its container has opened; a list opens its own. The forms are in creator/ and in
// timestep/.

#include "core/xml_io_options.h"
#include "visitors/file_visitor_writer.h"

#include <QString>

namespace NBrenmark {

class CXmlOutput;
class IFactoryParameter;

// clang-format off
#define BRENMARK_XML_WRITES_element(declaration) declaration;
#define BRENMARK_XML_WRITES_list(declaration) declaration;
#define BRENMARK_XML_WRITES_nothing(declaration) declaration {}
// clang-format on

class CXmlWriter : public IFileVisitorWriter
{
public:
    /// \param out      not owned
    /// \param options  not owned; a time that overrides one is used up
    CXmlWriter(CXmlOutput& out, CXmlIoOptions& options) : output(out), options(options) {}

#define STORED(operation, type, hdf5Read, hdf5Write, legacyRead, legacyWrite, inXml)                                   \
    BRENMARK_XML_WRITES_##inXml(void write##operation(const type&) override)
#define STAMPED(operation, type, hdf5Read, hdf5Write, legacyRead, legacyWrite, inXml)                                  \
    BRENMARK_XML_WRITES_##inXml(void write##operation(type&) override)
#include "visitors/stored_classes.def"

private:
    CXmlOutput& out() { return output; }
    /// \param particleType  null for what goes by no type
    void writeParameter(const QString& tag, const IFactoryParameter* parameter,
                        const QString& particleType = QString());

    CXmlOutput& output;
    CXmlIoOptions& options;
    const CTimestepData* timestep = nullptr; ///< that is being written; not owned
};

} // namespace NBrenmark
