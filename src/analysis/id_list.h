#pragma once
// The ids of what a selection holds, of one kind of object.

#include "core/read_write.h"

#include <QtGlobal>

#include <set>

namespace NBrenmark {

class IEntryForm;

namespace NSelection {

class CSelection;

class CIdList : public IReadWrite
{
public:
    explicit CIdList(qint32 kind = 0, CSelection* selection = nullptr) : kind(kind), selection(selection) {}

    bool write(CVersionedStream& stream, IProgressController* progress) override;
    /// \throws std::exception  the list ends early, or announces more than follows
    bool read(CVersionedStream& stream, IProgressController* progress) override;
    void form(IEntryForm& f);

    qint32 kind;
    std::set<qint32> ids;
    CSelection* selection; ///< not owned
};

} // namespace NSelection
} // namespace NBrenmark
