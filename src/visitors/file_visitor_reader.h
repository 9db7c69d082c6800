#pragma once
// The reading half of the contract between the model and the file formats. A stored object hands
// itself to the one slot of its class; the concrete visitor knows how such an object is stored.

#include "visitors/stored_types.h"

namespace NBrenmark {

class IFileVisitorReader
{
public:
    virtual ~IFileVisitorReader() = default;

#define STORED(operation, type, ...) virtual void read##operation(type&) = 0;
#define LEGACY(operation, type, column) virtual void read##operation(NLegacySupport::type&) = 0;
#include "visitors/stored_classes.def"
};

} // namespace NBrenmark
