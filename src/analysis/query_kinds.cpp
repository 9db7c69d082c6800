// What each class of queries adds to the common record, and the words of the classes.
#include "analysis/query_kinds.h"

#include "analysis/entry_form.h"
#include "analysis/query_keys.h"

namespace NBrenmark {

void CTotalQuery::form(IEntryForm& f)
{
    CQuery::form(f);
    f.flag8("useIdCounter", useIdCounter);
}
void CTotalQuery::keys(CQueryKeys& k)
{
    CQuery::keys(k);
    k.value("USE ID COUNTER", useIdCounter);
}

void CDistributionQuery::form(IEntryForm& f)
{
    CQuery::form(f);
    f.i32("intervals", intervals);
}
void CDistributionQuery::keys(CQueryKeys& k)
{
    CQuery::keys(k);
    k.value("INTERVALS", intervals);
}

void CContactFrequency::keys(CQueryKeys& k)
{
    CDistributionQuery::keys(k);
    k.value("AUTO RANGE", autoRange);
}

void CTimeDistributionQuery::form(IEntryForm& f)
{
    CQuery::form(f);
    f.i32("intervals", intervals);
    f.f64("startTime", startTime);
    f.f64("endTime", endTime);
    f.text("queryType", queryType);
}
void CTimeDistributionQuery::keys(CQueryKeys& k)
{
    CQuery::keys(k);
    k.value("INTERVALS", intervals);
    k.value("START TIME", startTime);
    k.value("END TIME", endTime);
    // QUERY TYPE itself names the class: the inner query's word is below it.
    k.value("QUERY TYPE:QUERY TYPE", queryType);
}

void CTwoAttribQuery::form(IEntryForm& f)
{
    CQuery::form(f);
    f.text("queryType1", queryType1);
    f.text("queryType2", queryType2);
    f.text("objectType", objectType);
}
void CTwoAttribQuery::keys(CQueryKeys& k)
{
    CQuery::keys(k);
    k.value("QUERY TYPE 1", queryType1);
    k.value("QUERY TYPE 2", queryType2);
    k.value("OBJECT TYPE", objectType);
}

void CMassFlowQuery::form(IEntryForm& f)
{
    CQuery::form(f);
    f.text("displayQueryType", displayQueryType);
}
void CMassFlowQuery::keys(CQueryKeys& k)
{
    CQuery::keys(k);
    k.value("DISPLAY QUERY TYPE", displayQueryType);
}

void CDensityQuery::form(IEntryForm& f)
{
    CQuery::form(f);
    if (f.since(30, 0, 19))
        f.i32("densityKind", densityKind);
}

// ---------------------------------------------------------------- by name

template <class TQuery>
static std::unique_ptr<CQuery> make()
{
    return std::make_unique<TQuery>();
}

struct SQueryKindRow
{
    const char* identifier;
    std::unique_ptr<CQuery> (*create)();
};

static const SQueryKindRow queryKinds[] = {
    {"Standard", make<CNormalQuery>},
    {"Total", make<CTotalQuery>},
    {"Total Over Time", [] { return std::unique_ptr<CQuery>(new CTotalQuery(true)); }},
    {"CoG", make<CCoGQuery>},
    {"Average", make<CAverageQuery>},
    {"Maximum", make<CMaximumQuery>},
    {"Minimum", make<CMinimumQuery>},
    {"Maximum & Minimum", make<CMaxMinQuery>},
    {"Distribution", make<CDistributionQuery>},
    {"Contact Distribution", make<CContactFrequency>},
    {"Time Distribution", make<CTimeDistributionQuery>},
    {"Two Attribute", make<CTwoAttribQuery>},
    {"Mass Flow Rate", make<CMassFlowQuery>},
    {"Total Pressure", make<CPressurePerSelectionQuery>},
    {"Density", make<CDensityQuery>},
};

QStringList queryIdentifiers()
{
    QStringList words;
    for (const SQueryKindRow& row : queryKinds)
        words.append(QLatin1String(row.identifier));
    return words;
}

std::unique_ptr<CQuery> createQuery(const QString& identifier, int flag)
{
    for (const SQueryKindRow& row : queryKinds) {
        if (identifier != QLatin1String(row.identifier))
            continue;
        std::unique_ptr<CQuery> query = row.create();
        query->contactQuery = flag == 1;
        return query;
    }
    return nullptr;
}

} // namespace NBrenmark
