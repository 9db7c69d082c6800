#pragma once
// Reads a creator model or a timestep from a numbered file. Every slot's form is in the file of its
// area, beside the writer's.

#include "io/hdf5/form.h"
#include "visitors/file_visitor_reader.h"
#include "visitors/visitor_overrides.h"

namespace NBrenmark {

class CCustomPropertyManager;

/// What is stored alike in both kinds of data; any other slot reads nothing.
class CHdf5Reader : public CHdf5Visitor, public IFileVisitorReader
{
public:
    CHdf5Reader(H5::H5File& file, SSaveOptions& options) : CHdf5Visitor(file, options), form(*this, fileVersion) {}

#define STORED(operation, type, readBy, ...) BRENMARK_PLAIN_##readBy(void read##operation(type&) override)
#define LEGACY(operation, type, ...)                                                                                   \
    void read##operation(NLegacySupport::type&) override {}
#include "visitors/stored_classes.def"

    quint32 fileVersion = 0; ///< of the file: set by the first thing that a root reads

protected:
    CHdf5FormReader& in() { return form; }

private:
    CHdf5FormReader form;
};

class CHdf5CreatorDataReader : public CHdf5Reader
{
public:
    using CHdf5Reader::CHdf5Reader;

#define STORED(operation, type, readBy, ...) BRENMARK_CREATOR_##readBy(void read##operation(type&) override)
#include "visitors/stored_classes.def"
};

class CHdf5TimestepDataReader : public CHdf5Reader
{
public:
    using CHdf5Reader::CHdf5Reader;

#define STORED(operation, type, readBy, ...) BRENMARK_TIMESTEP_##readBy(void read##operation(type&) override)
#include "visitors/stored_classes.def"
};

} // namespace NBrenmark
