// The block of selections that are carried as bytes: what is written of them, and what stays with the block of the
// others.
#include "analysis/carried_selections.h"

#include "core/versioned_stream.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace NBrenmark::NSelection {

/// Two texts and three numbers.
static constexpr qint64 leastBytes = 5 * 4;

void CCarriedSelections::clear(bool notify)
{
    list.clear();
    setModified(notify);
}

void CCarriedSelections::clearHome()
{
    list.erase(
        std::remove_if(list.begin(), list.end(), [](const SCarriedSelection& selection) { return selection.isAtHome; }),
        list.end());
}

static bool isAway(const SCarriedSelection& selection) { return !selection.isAtHome; }

bool CCarriedSelections::hasContent() const { return std::any_of(list.begin(), list.end(), isAway); }

bool CCarriedSelections::write(CVersionedStream& stream, IProgressController*)
{
    stream << qint32(std::count_if(list.begin(), list.end(), isAway));
    for (const SCarriedSelection& selection : list) {
        if (!isAway(selection))
            continue;
        stream << selection.typeId << selection.name << selection.version << selection.edition
               << qint32(selection.bytes.size());
        stream.writeRawData(selection.bytes.constData(), selection.bytes.size());
    }
    setModified(false);
    return stream.status() == QDataStream::Ok;
}

bool CCarriedSelections::read(CVersionedStream& stream, IProgressController*)
{
    qint32 count = 0;
    stream >> count;
    if (stream.status() != QDataStream::Ok || count < 0 || count > stream.bytesLeft() / leastBytes)
        throw std::length_error(std::to_string(count) + " carried selections announced, " +
                                std::to_string(stream.bytesLeft()) + " bytes follow");
    for (qint32 i = 0; i < count; ++i) {
        SCarriedSelection selection;
        qint32 length = 0;
        stream >> selection.typeId >> selection.name >> selection.version >> selection.edition >> length;
        if (stream.status() != QDataStream::Ok || length < 0 || length > stream.bytesLeft())
            throw std::length_error("carried selection " + std::to_string(i + 1) + " ends early");
        selection.bytes.resize(length);
        if (stream.readRawData(selection.bytes.data(), length) != length)
            throw std::runtime_error("carried selection " + std::to_string(i + 1) + " ends early");
        list.push_back(std::move(selection));
    }
    setModified(false);
    return true;
}

} // namespace NBrenmark::NSelection
