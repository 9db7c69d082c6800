// Finds attributes and turns their texts into numbers.
#include "xml/xml_attributes.h"

namespace NBrenmark {

/// Attributes are asked for in the order in which they are written, so that the search begins after the last one found.
const QXmlStreamAttribute* CXmlAttributes::find(const QString& name) const
{
    const int count = held.size();
    for (int step = 0; step < count; ++step) {
        const int at = (next + step) % count;
        if (held.at(at).qualifiedName() == name) {
            next = at + 1;
            asked[static_cast<std::size_t>(at)] = true;
            return &held.at(at);
        }
    }
    return nullptr;
}

void CXmlAttributes::know(const char* prefix) const
{
    for (int at = 0; at < held.size(); ++at)
        if (held.at(at).qualifiedName().startsWith(QLatin1String(prefix)))
            asked[static_cast<std::size_t>(at)] = true;
}

std::vector<QString> CXmlAttributes::unknown() const
{
    std::vector<QString> names;
    for (int at = 0; at < held.size(); ++at)
        if (!asked[static_cast<std::size_t>(at)])
            names.push_back(held.at(at).qualifiedName().toString());
    return names.size() < asked.size() ? names : std::vector<QString>();
}

QString CXmlAttributes::text(const QString& name) const
{
    const QXmlStreamAttribute* const attribute = find(name);
    return attribute != nullptr ? attribute->value().toString() : QString();
}

template <class TConvert>
auto CXmlAttributes::converted(const QString& name, TConvert&& convert) const
{
    const QString value = text(name);
    bool isNumber = false;
    const auto number = convert(value, &isNumber);
    if (!isNumber && !value.isEmpty())
        noted.push_back(name);
    return isNumber ? number : decltype(number)(0);
}

double CXmlAttributes::number(const QString& name) const
{
    return converted(name, [](const QString& text, bool* isNumber) { return text.toDouble(isNumber); });
}

qint32 CXmlAttributes::integer(const QString& name) const
{
    return converted(name, [](const QString& text, bool* isNumber) { return text.toInt(isNumber); });
}

quint32 CXmlAttributes::count(const QString& name) const
{
    return converted(name, [](const QString& text, bool* isNumber) { return text.toUInt(isNumber); });
}

bool CXmlAttributes::flag(const QString& name) const
{
    const QString value = text(name);
    if (value == QLatin1String("true") || value == QLatin1String("yes"))
        return true;
    if (value == QLatin1String("false") || value == QLatin1String("no"))
        return false;
    return integer(name) != 0;
}

} // namespace NBrenmark
