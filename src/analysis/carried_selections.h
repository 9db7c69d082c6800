#pragma once
// Selections that can't be taken apart, carried whole. Where nothing says how long a record is, one that can't be read
// ends the reading of all that follow. So these have a block of their own in the settings file, which programs that
// don't know it leave out, and read everything else.

#include "core/read_write.h"

#include <QByteArray>
#include <QString>

#include <utility>
#include <vector>

namespace NBrenmark::NSelection {

/// A selection as it came; a whole block of them if it has no class.
struct SCarriedSelection
{
    QString typeId;
    QString name;
    quint32 version = 0; ///< of the file that it came from
    quint32 edition = 0;
    QByteArray bytes;      ///< its record, after class and name. Of a block: all of it
    bool isAtHome = false; ///< its layout is that of the written version: it stays in the block of the selections
};

class CCarriedSelections : public ISimulationSettingsEntry
{
public:
    /// The block's identifier: "BSel".
    static constexpr qint32 identifier = 0x4253656C;

    bool write(CVersionedStream& stream, IProgressController* progress) override;
    /// \throws std::exception  the block ends early, or announces more than follows
    bool read(CVersionedStream& stream, IProgressController* progress) override;
    bool isModified() const override { return modified; }
    void setModified(bool value) override { modified = value; }
    void clear(bool notify) override;
    bool hasContent() const override;

    const std::vector<SCarriedSelection>& selections() const { return list; }
    /// Drops those of the block of the selections, which go with it.
    void clearHome();
    void add(SCarriedSelection selection) { list.push_back(std::move(selection)); }

private:
    std::vector<SCarriedSelection> list;
    bool modified = false;
};

} // namespace NBrenmark::NSelection
