#pragma once
// The block of the selections, cut into the records of single ones. Nothing says how long a record is: it ends where the
// next selection begins, which is known by its class, its name twice and a flag.

#include "io/settings/selection_record.h"

#include <QByteArray>
#include <QString>

#include <optional>
#include <vector>

namespace NBrenmark::NSelection {

/// One selection of a block.
struct SSelectionPiece
{
    QString typeId;
    QString name;
    QByteArray record;                   ///< from the selection's own name on
    std::optional<SDisplayPart> display; ///< none if the record can't be taken apart
};

/// Cuts a block. What looks like a selection inside of another one's bytes is distinguished from a selection by what can be
/// taken apart: of all cuts into so many pieces, the one with the most such pieces is right if it is alone.
/// \param block  from the first selection's class on
/// \return none if no cut is right
std::optional<std::vector<SSelectionPiece>> cutSelections(const QByteArray& block, qint32 count, quint32 version,
                                                          quint32 edition);

} // namespace NBrenmark::NSelection
