#pragma once
// The fields of a deck, block 2 of its settings file.

#include "analysis/field_data.h"
#include "core/read_write.h"

#include <QObject>

#include <map>
#include <memory>
#include <string>

namespace NBrenmark::NField {

class CFieldManager : public QObject, public ISimulationSettingsEntry
{
    Q_OBJECT
public:
    CFieldManager();
    ~CFieldManager() override;

    /// Takes a field over, and gives it an id if it has none. Refused, and left with the caller, if it is null, or
    /// its name or its id is another field's.
    bool addField(std::unique_ptr<CFieldData>& field);
    /// False, and nothing changed, if there is none of that name.
    bool deleteField(const std::string& name);
    /// False, and nothing changed, if there is no field of the old name, or the new one is empty or another field's.
    bool renameField(const std::string& oldName, const std::string& newName);
    /// Numbers the fields as they number themselves. False if two have one id: the later name keeps its field.
    bool rebuildIdMap();
    /// Null if there is none.
    CFieldData* getField(qint32 id) const;
    CFieldData* getField(const std::string& name) const;
    /// By name.
    const std::map<std::string, std::unique_ptr<CFieldData>>& fields() const { return byName; }

    bool write(CVersionedStream& stream, IProgressController* progress) override;
    /// A field that is none, or has the name or id of an earlier one, ends the reading: the earlier ones stay, and
    /// the log names what doesn't. False after a cancel.
    /// \throws std::exception  the block ends early, or announces more than follows
    bool read(CVersionedStream& stream, IProgressController* progress) override;
    bool isModified() const override { return modified; }
    void setModified(bool value) override { modified = value; }
    void clear(bool notify) override;

Q_SIGNALS:
    void fieldAdded(std::string name);
    void fieldDeleted(std::string name);
    void cleared();
    void fieldRenamed(std::string oldName, std::string newName);

private:
    std::map<std::string, std::unique_ptr<CFieldData>> byName;
    std::map<qint32, CFieldData*> byId; ///< not owning
    qint32 nextId = 0;
    bool modified = false;
};

} // namespace NBrenmark::NField
