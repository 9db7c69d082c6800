#pragma once
// The readers of the legacy family. Who reads what is said by visitors/stored_classes.def; the forms
// are in creator/, in timestep/ and, where both kinds of data share them, in this folder.

#include "io/dem/dem_visitor.h"
#include "io/dem/form.h"
#include "legacy/old_records.h"
#include "visitors/file_visitor_reader.h"
#include "visitors/visitor_overrides.h"

namespace NBrenmark {

class CCustomPropertyManager;

class CDemReader : public CDemVisitor, public IFileVisitorReader
{
public:
    using CDemVisitor::CDemVisitor;

#define STORED(operation, type, hdf5Read, hdf5Write, readBy, writtenBy, ...)                                           \
    BRENMARK_PLAIN_##readBy(void read##operation(type&) override)
#define LEGACY(operation, type, readBy) BRENMARK_PLAIN_##readBy(void read##operation(NLegacySupport::type&) override)
#include "visitors/stored_classes.def"

protected:
    CInForm in() { return CInForm(*stream); }

    /// Lets who wants to know hear that records of a list follow, and each of them.
    void beginRecords(const char* list) const
    {
        if (stream->options.oldRecords != nullptr)
            stream->options.oldRecords->begin(list);
    }
    template <class TRecord>
    void reportRecord(const TRecord& record, qint64 byte) const
    {
        if (stream->options.oldRecords != nullptr)
            stream->options.oldRecords->hear(record, byte);
    }

    int listDepth = 0; ///< lists of spheres that are being read, one within the other
};

class CDemCreatorDataReader : public CDemReader
{
public:
    using CDemReader::CDemReader;

#define STORED(operation, type, hdf5Read, hdf5Write, readBy, writtenBy, ...)                                           \
    BRENMARK_CREATOR_##readBy(void read##operation(type&) override)
#define LEGACY(operation, type, readBy) BRENMARK_CREATOR_##readBy(void read##operation(NLegacySupport::type&) override)
#include "visitors/stored_classes.def"
};

class CDemTimestepDataReader : public CDemReader
{
public:
    using CDemReader::CDemReader;

#define STORED(operation, type, hdf5Read, hdf5Write, readBy, writtenBy, ...)                                           \
    BRENMARK_TIMESTEP_##readBy(void read##operation(type&) override)
#define LEGACY(operation, type, readBy) BRENMARK_TIMESTEP_##readBy(void read##operation(NLegacySupport::type&) override)
#include "visitors/stored_classes.def"
};

} // namespace NBrenmark
