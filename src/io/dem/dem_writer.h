#pragma once
// The writers of the legacy family. They write the form of the current version and no other.

#include "io/dem/dem_reader.h"
#include "visitors/file_visitor_writer.h"

namespace NBrenmark {

class CDemWriter : public CDemVisitor, public IFileVisitorWriter
{
public:
    using CDemVisitor::CDemVisitor;

#define STORED(operation, type, hdf5Read, hdf5Write, readBy, writtenBy, ...)                                           \
    BRENMARK_PLAIN_##writtenBy(void write##operation(const type&) override)
#define STAMPED(operation, type, hdf5Read, hdf5Write, readBy, writtenBy, ...)                                          \
    BRENMARK_PLAIN_##writtenBy(void write##operation(type&) override)
#include "visitors/stored_classes.def"

protected:
    COutForm out() { return COutForm(*stream); }
};

class CDemCreatorDataWriter : public CDemWriter
{
public:
    using CDemWriter::CDemWriter;

#define STORED(operation, type, hdf5Read, hdf5Write, readBy, writtenBy, ...)                                           \
    BRENMARK_CREATOR_##writtenBy(void write##operation(const type&) override)
#define STAMPED(operation, type, hdf5Read, hdf5Write, readBy, writtenBy, ...)                                          \
    BRENMARK_CREATOR_##writtenBy(void write##operation(type&) override)
#include "visitors/stored_classes.def"
};

class CDemTimestepDataWriter : public CDemWriter
{
public:
    using CDemWriter::CDemWriter;

#define STORED(operation, type, hdf5Read, hdf5Write, readBy, writtenBy, ...)                                           \
    BRENMARK_TIMESTEP_##writtenBy(void write##operation(const type&) override)
#define STAMPED(operation, type, hdf5Read, hdf5Write, readBy, writtenBy, ...)                                          \
    BRENMARK_TIMESTEP_##writtenBy(void write##operation(type&) override)
#include "visitors/stored_classes.def"
};

} // namespace NBrenmark
