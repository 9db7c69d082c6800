#pragma once
// The record of a selection: its name and a flag, its display options, and the rest. The display options have no
// layout here and nothing says where they end, so a record is taken apart by trying every place: where the rest
// begins, it reads to the last byte of the record.

#include <QByteArray>
#include <QtGlobal>

#include <optional>

namespace NBrenmark::NSelection {

class CSelection;

/// Where the display options of a record are.
struct SDisplayPart
{
    int begin;
    int end;
};

/// Of all places in which the rest reads, the one that meets the most words of known classes (filters, queries, shapes)
/// is right if it is alone with that number and meets one at least; so is an only place. Otherwise, and if the work
/// grows out of proportion to the record, it gives up without a decision.
/// \param scratch  of the record's class; its content is lost
std::optional<SDisplayPart> displayOf(CSelection& scratch, const QByteArray& record, quint32 version, quint32 edition);

/// Fills a selection from a record whose display bytes displayOf has found.
void readRecord(CSelection& selection, const QByteArray& record, const SDisplayPart& display, quint32 version,
                quint32 edition);

/// The record in the current layout.
QByteArray writtenRecord(CSelection& selection);

} // namespace NBrenmark::NSelection
