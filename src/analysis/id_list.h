#pragma once
// The ids of what a selection holds, of one kind of object.

#include "analysis/entry_form.h"

#include <QtGlobal>

#include <set>

namespace NBrenmark::NSelection {

class CSelection;

class CIdList : public IFormed
{
public:
    explicit CIdList(qint32 kind = 0, CSelection* selection = nullptr) : kind(kind), selection(selection) {}

    void form(IEntryForm& f) override { f.i32List("ids", ids); }

    qint32 kind;
    std::set<qint32> ids;
    CSelection* selection; ///< not owned
};

} // namespace NBrenmark::NSelection
