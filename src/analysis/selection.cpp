#include "analysis/selection.h"

#include "analysis/entry_form.h"

#include <QDataStream>

#include <algorithm>

namespace NBrenmark::NSelection {

CSelection::CSelection(const std::string& name, CDisplayOptions& particle, CDisplayOptions& contact)
    : particleDisplay(particle), contactDisplay(contact), name(name)
{
    for (qint32 kind = 0; kind < idKinds; ++kind)
        ids(kind) = CIdList(kind, this);
}

void CSelection::clearIds()
{
    for (CIdList& list : idLists)
        list.ids.clear();
}

bool CSelection::hasIds() const
{
    return std::any_of(idLists.begin(), idLists.end(), [](const CIdList& list) { return !list.ids.empty(); });
}

// ---------------------------------------------------------------- the stream

void CSelection::form(IEntryForm& f)
{
    f.text("name", name);
    f.flag("active", active);
    if (f.isReading()) {
        carried.reset();
        if (f.nextWord() != CDisplayOptions::recordWord)
            carried.emplace();
    }
    if (carried)
        f.carried(*carried);
    else
        body(f);
}

void CSelection::body(IEntryForm& f)
{
    f.part("particleDisplay", particleDisplay);
    f.part("contactDisplay", contactDisplay);
    f.part("filters", filters);
    f.part("queries", queries);
}

bool CSelection::write(QDataStream& stream, IProgressController*)
{
    COutEntryForm f(stream);
    form(f);
    return stream.status() == QDataStream::Ok;
}

bool CSelection::read(QDataStream& stream, IProgressController*)
{
    CInEntryForm f(stream);
    form(f);
    if (!carried)
        applyToQueries();
    return true;
}

void CAutoSelection::body(IEntryForm& f)
{
    CSelection::body(f);
    if (f.since(27, 0, 0))
        f.rgb("colour", colour);
    if (f.since(30, 0, 14))
        f.real("opacity", opacity);
}

// ---------------------------------------------------------------- picked by hand

void CManualSelection::body(IEntryForm& f)
{
    CAutoSelection::body(f);
    f.part("manualIds", manualIds);
}

bool CManualSelection::setParamData(const IParamData& data)
{
    CManualIdsParamData record;
    if (!record.copyFrom(data))
        return false;
    manualIds.ids = record.ids;
    return true;
}

std::unique_ptr<IParamData> CManualSelection::paramData() const
{
    auto record = std::make_unique<CManualIdsParamData>();
    record->ids = manualIds.ids;
    return record;
}

} // namespace NBrenmark::NSelection
