#pragma once
// The selections of a deck by name, block 1 of its settings file.

#include "analysis/carried_selections.h"
#include "analysis/selection.h"
#include "core/read_write.h"

#include <QObject>

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace NBrenmark::NSelection {

class CGeometricRegionSelection;

class CSelectionMap : public QObject, public ISimulationSettingsEntry
{
    Q_OBJECT
public:
    CSelectionMap();
    ~CSelectionMap() override;

    /// A selection of the class that a word names, with the display options of its name; null for a word that names
    /// none. It isn't in the map yet.
    std::unique_ptr<CSelection> createSelection(const QString& typeId, const std::string& name);
    /// Takes a selection over. Refused, and left with the caller, if it is null or its name is in use.
    bool add(std::unique_ptr<CSelection>& selection);
    /// Makes one element of a region, by its number from 0. Null, with a report, if the name is in use.
    CSelection* createSubSelection(CGeometricRegionSelection& region, const std::string& name, int element);

    /// Null if there is none.
    CSelection* selection(const std::string& name) const;
    bool contains(const std::string& name) const { return selection(name) != nullptr; }
    int count(bool includeSubSelections) const;
    /// False, with a report, if there is none of the old name, or the new one is empty or in use.
    bool rename(const std::string& oldName, const std::string& newName);
    /// False if there is none of that name. The elements of a region go with it.
    bool remove(const std::string& name);
    const std::map<std::string, std::unique_ptr<CSelection>>& selections() const { return byName; }
    /// What of the selections is carried whole.
    CCarriedSelections& carried() { return carriedOnes; }
    const CCarriedSelections& carried() const { return carriedOnes; }

    bool write(CVersionedStream& stream, IProgressController* progress) override;
    /// Takes all that is left of the block. A selection that can't be taken apart, has a class that isn't known here or
    /// a name that is in use, and a block that can't be cut into its selections, are carried whole, which the log
    /// reports. False after a cancel.
    /// \throws std::exception  the block ends early; or it can't be cut and nothing says where it ends
    bool read(CVersionedStream& stream, IProgressController* progress) override;
    bool isModified() const override { return modified; }
    void setModified(bool value) override { modified = value; }
    void clear(bool notify) override;

Q_SIGNALS:
    void cleared();

private:
    CDisplayOptionManager displays; // outlives the selections, which look at it
    std::map<std::string, std::unique_ptr<CSelection>> byName;
    CCarriedSelections carriedOnes;
    bool modified = false;
};

} // namespace NBrenmark::NSelection
