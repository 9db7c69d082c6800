// The two stored forms of a query: in the settings file, and as keys of the configuration.
#include "analysis/query.h"

#include "analysis/query_keys.h"

namespace NBrenmark {

QString CQuery::header() const
{
    QString text = name();
    for (const QString& word : {primaryAttribute, primaryComponent})
        if (!word.isEmpty())
            text += QLatin1Char(' ') + word;
    return text;
}

// ---------------------------------------------------------------- the stream form

void CQuery::form(IEntryForm& f)
{
    f.f64("minimum", minimum);
    f.f64("maximum", maximum);
    f.f64("secondaryMinimum", secondaryMinimum);
    f.f64("secondaryMaximum", secondaryMaximum);
    f.f64("reference1Distance", reference1.distance);
    f.f64("reference2Distance", reference2.distance);
    f.text("primaryAttribute", primaryAttribute);
    f.text("secondaryAttribute", secondaryAttribute);
    f.text("primaryComponent", primaryComponent);
    f.text("secondaryComponent", secondaryComponent);
    f.text("group", group);
    f.text("typeName", typeName);
    f.i32("attributeType", attributeType);
    f.i32("reference1Type", reference1.type);
    f.i32("reference2Type", reference2.type);
    f.flag8("collate", collate);
    f.flag8("useRange", useRange);
    f.flag8("useRange2", useRange2);
    f.flag8("contactQuery", contactQuery);
    f.point("reference1Point", reference1.point);
    f.point("reference2Point", reference2.point);
    if (f.isReading() && !f.since(30, 0, 18)) // until then both meant something else
        f.dropObsolete({&secondaryComponent, &typeName});
}

// ---------------------------------------------------------------- the key form

void CQuery::keys(CQueryKeys& k)
{
    k.value("COLLATE", collate);
    k.value("USE RANGE", useRange);
    k.value("USE RANGE 2", useRange2);
    k.value("CONTACT QUERY", contactQuery);
    k.value("ATTR TYPE", attributeType);
    k.value("MIN", minimum);
    k.value("MAX", maximum);
    k.value("SECONDARY MIN", secondaryMinimum);
    k.value("SECONDARY MAX", secondaryMaximum);
    k.value("ATTR", primaryAttribute);
    k.value("SECONDARY ATTR", secondaryAttribute);
    k.value("PRIMARY COMPONENT", primaryComponent);
    k.value("TYPE", typeName);
    k.value("ACTIVE GROUP", group);
    k.value("ID", id);
    k.value("REF 1:TYPE", reference1.type);
    k.value("REF 2:TYPE", reference2.type);
    k.value("REF 1:POINT", reference1.point);
    k.value("REF 2:POINT", reference2.point);
    k.value("REF 1:DISTANCE", reference1.distance);
    k.value("REF 2:DISTANCE", reference2.distance);
    k.value("USE AXIS:USE AXIS ENABLE", useAxis);
    k.value("USE AXIS:USE AXIS LINK GEOMETRY", axisLinksGeometry);
    k.value("USE AXIS:USE AXIS START POINT", axisStart);
    k.value("USE AXIS:USE AXIS END POINT", axisEnd);
}

void CQuery::writeConfiguration(NConfig::CConfigHandle& handle)
{
    CQueryKeys k(handle, false);
    keys(k);
}

void CQuery::readConfiguration(NConfig::CConfigHandle& handle)
{
    CQueryKeys k(handle, true);
    keys(k);
}

void CQuery::removeConfiguration(NConfig::CConfigHandle& handle) { handle.manager().removeKey(handle.basePath()); }

} // namespace NBrenmark
