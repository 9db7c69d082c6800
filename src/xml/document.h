#pragma once
// Documents of a deck: one for its definition, one for a timestep. What is wrong with a document as a whole ends its
// read by a caused_error, whose text says line and column; what a deck has no place for is reported and left out.

#include "core/xml_io_options.h"

class QIODevice;

namespace NBrenmark {

class CCreatorData;
class CTimestepData;

enum EXmlDocument
{
    eXmlDefinition,
    eXmlTimestep
};

/// What the root of a document says that it is. Reads no further. \throws caused_error  it is no document of a deck
EXmlDocument kindOfDocument(QIODevice& device);

/// Writes element by element: no more is held than one.
/// \param options  a time that overrides that of a timestep is used up
/// \throws caused_error  the device took less than all of it
void writeDefinition(QIODevice& device, CCreatorData& creator, CXmlIoOptions& options);
void writeTimestep(QIODevice& device, CTimestepData& timestep, CXmlIoOptions& options);

/// Replaces a definition, its custom properties included, by what a document holds.
/// \param options  get the version of the document
void readDefinition(QIODevice& device, CCreatorData& creator, CXmlIoOptions& options);
/// Makes a timestep the first one of its definition, without a particle.
void beginTimestep(CTimestepData& timestep);
/// Replaces a timestep. Its definition has been read before: the particles are of its types.
void readTimestep(QIODevice& device, CTimestepData& timestep, CXmlIoOptions& options);

} // namespace NBrenmark
