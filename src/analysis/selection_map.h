#pragma once
// The selections of a deck, block 1 of its settings file. This build carries decks without selections: it
// reads and writes the empty map, and refuses one that holds any.

#include "core/read_write.h"

namespace NBrenmark::NSelection {

class CSelectionMap : public ISimulationSettingsEntry
{
public:
    bool write(QDataStream& stream, IProgressController* progress) override;
    /// False for a map that is damaged.
    /// \throws not_carried_error  for a map that holds selections
    bool read(QDataStream& stream, IProgressController* progress) override;
    bool isModified() const override { return modified; }
    void setModified(bool value) override { modified = value; }
    void clear(bool notify) override { setModified(notify); }

private:
    bool modified = false;
};

} // namespace NBrenmark::NSelection
