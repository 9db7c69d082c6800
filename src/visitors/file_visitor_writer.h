#pragma once
// The writing half of the contract between the model and the file formats.

#include "visitors/stored_types.h"

namespace NBrenmark {

class IFileVisitorWriter
{
public:
    virtual ~IFileVisitorWriter() = default;

#define STORED(operation, type, ...) virtual void write##operation(const type&) = 0;
#define STAMPED(operation, type, ...) virtual void write##operation(type&) = 0;
#include "visitors/stored_classes.def"
};

} // namespace NBrenmark
