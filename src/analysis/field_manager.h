#pragma once
// The fields of a deck, block 2 of its settings file: clouds of points with a value at each. This build carries
// decks without fields: it reads and writes the empty list, and refuses one that holds any.

#include "core/read_write.h"

namespace NBrenmark::NField {

class CFieldManager : public ISimulationSettingsEntry
{
public:
    bool write(QDataStream& stream, IProgressController* progress) override;
    /// False for a list that is damaged.
    /// \throws not_carried_error  for a list that holds fields
    bool read(QDataStream& stream, IProgressController* progress) override;
    bool isModified() const override { return modified; }
    void setModified(bool value) override { modified = value; }
    void clear(bool notify) override { setModified(notify); }

private:
    bool modified = false;
};

} // namespace NBrenmark::NField
