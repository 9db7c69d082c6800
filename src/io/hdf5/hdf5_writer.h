#pragma once
// Writes a creator model or a timestep into a numbered file.

#include "io/hdf5/form.h"
#include "visitors/file_visitor_writer.h"
#include "visitors/visitor_overrides.h"

namespace NBrenmark {

/// What is stored alike in both kinds of data; any other slot writes nothing.
class CHdf5Writer : public CHdf5Visitor, public IFileVisitorWriter
{
public:
    /// \param measures  as of CHdf5FormWriter; the file is never touched then
    CHdf5Writer(H5::H5File& file, SSaveOptions& options, bool measures = false)
        : CHdf5Visitor(file, options), form(*this, measures)
    {}

#define STORED(operation, type, readBy, writtenBy, ...)                                                                \
    BRENMARK_PLAIN_##writtenBy(void write##operation(const type&) override)
#define STAMPED(operation, type, readBy, writtenBy, ...)                                                               \
    BRENMARK_PLAIN_##writtenBy(void write##operation(type&) override)
#include "visitors/stored_classes.def"

protected:
    CHdf5FormWriter& out() { return form; }

private:
    CHdf5FormWriter form;
};

class CHdf5CreatorDataWriter : public CHdf5Writer
{
public:
    using CHdf5Writer::CHdf5Writer;

#define STORED(operation, type, readBy, writtenBy, ...)                                                                \
    BRENMARK_CREATOR_##writtenBy(void write##operation(const type&) override)
#define STAMPED(operation, type, readBy, writtenBy, ...)                                                               \
    BRENMARK_CREATOR_##writtenBy(void write##operation(type&) override)
#include "visitors/stored_classes.def"
};

class CHdf5TimestepDataWriter : public CHdf5Writer
{
public:
    using CHdf5Writer::CHdf5Writer;

#define STORED(operation, type, readBy, writtenBy, ...)                                                                \
    BRENMARK_TIMESTEP_##writtenBy(void write##operation(const type&) override)
#define STAMPED(operation, type, readBy, writtenBy, ...)                                                               \
    BRENMARK_TIMESTEP_##writtenBy(void write##operation(type&) override)
#include "visitors/stored_classes.def"
};

} // namespace NBrenmark
