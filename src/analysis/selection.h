#pragma once
// A selection: a named part of a deck on which analysis runs. Here the base of all, and those that hold ids which
// their user picked.

#include "analysis/display_options.h"
#include "analysis/filters.h"
#include "analysis/id_list.h"
#include "analysis/query_map.h"
#include "core/parameter_support.h"

#include <QColor>
#include <QString>

#include <array>
#include <string>

namespace NBrenmark::NSelection {

class CSelection : public IFormed
{
public:
    static constexpr qint32 idKinds = 6;

    /// \param particle, contact  not owned
    CSelection(const std::string& name, CDisplayOptions& particle, CDisplayOptions& contact);
    CSelection(const CSelection&) = delete; // its lists know it
    CSelection& operator=(const CSelection&) = delete;

    /// Takes all that is left of the block or the device for the record.
    /// \throws std::exception  it can't be taken apart (io/settings/selection_record.h)
    bool read(CVersionedStream& stream, IProgressController* progress) override;
    void form(IEntryForm& f) override;
    /// What follows the display options: filters, queries, and what the class adds.
    virtual void rest(IEntryForm& f);
    /// Whether a layout has a place for geometry of the selection's own.
    virtual bool mayOwnGeometry(const IEntryForm&) const { return false; }

    /// The text by which files name the class.
    virtual QString typeId() const = 0;
    /// Part of another selection, and stored by none.
    virtual bool isSubSelection() const { return false; }
    /// The ids of one kind, from 0 to idKinds - 1.
    virtual CIdList& ids(qint32 kind) { return idLists.at(static_cast<size_t>(idKinds - 1 - kind)); }
    virtual void clearIds();
    virtual bool hasIds() const;
    /// For who asks the queries: brings them in line with the selection. They are carried as they are.
    virtual void applyToQueries() {}

    CDisplayOptions& particleDisplay;
    CDisplayOptions& contactDisplay;
    CFilterList filters;
    QueryMap queries{eSelectionQueries};
    std::string name;
    bool active = false;

private:
    std::array<CIdList, idKinds> idLists; ///< the last kind first
};

class CAutoSelection : public CSelection
{
public:
    using CSelection::CSelection;

    QColor colour = Qt::black;
    double opacity = 1.0;

    void rest(IEntryForm& f) override;
    /// Of what a layout has here, the bytes.
    static int colourBytes(const IEntryForm& f);
};

/// The ids that a user has picked by hand.
class CManualIdsParamData : public CParamData<CManualIdsParamData>
{
public:
    std::set<qint32> ids;
};

class CManualSelection : public CAutoSelection, public IParameterSupport
{
public:
    using CAutoSelection::CAutoSelection;

    QString typeId() const override { return QStringLiteral("Manual Selection"); }
    bool setParamData(const IParamData& data) override;
    std::unique_ptr<IParamData> paramData() const override;
    std::type_index paramDataType() const override { return typeid(CManualIdsParamData); }

    CIdList manualIds{0, this};

    void rest(IEntryForm& f) override;
};

} // namespace NBrenmark::NSelection
