// What all selections store, in front of and after the display options that have no layout here.
#include "analysis/selection.h"

#include "visitors/settings_streams.h"

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
    f.flag8("active", active);
    // No boundary between the two is known: all that came is in the first.
    for (CDisplayOptions* display : {&particleDisplay, &contactDisplay})
        f.unlaid("display", display->bytes, nullptr);
    rest(f);
}

void CSelection::rest(IEntryForm& f)
{
    f.part("filters", filters);
    f.part("queries", queries);
}

bool CSelection::read(CVersionedStream& stream, IProgressController*) { return NSettingsFamily::read(stream, *this); }

int CAutoSelection::colourBytes(const IEntryForm& f)
{
    return (f.since(27, 0, 0) ? 3 * 4 : 0) + (f.since(30, 0, 14) ? 8 : 0);
}

void CAutoSelection::rest(IEntryForm& f)
{
    CSelection::rest(f);
    if (f.since(27, 0, 0))
        f.rgb("colour", colour);
    if (f.since(30, 0, 14))
        f.f64("opacity", opacity);
}

// ---------------------------------------------------------------- picked by hand

void CManualSelection::rest(IEntryForm& f)
{
    CAutoSelection::rest(f);
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
