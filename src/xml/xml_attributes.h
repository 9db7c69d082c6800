#pragma once
// An opening tag with its attributes, as the parts of a deck read it.

#include <QString>
#include <QXmlStreamAttributes>

#include <vector>

namespace NBrenmark {

/// Where in a document, both counted from 1.
struct SXmlPlace
{
    qint64 line = 0;
    qint64 column = 0;
};

class CXmlAttributes
{
public:
    /// \param parent  the tag around it; empty for the root
    CXmlAttributes(const QString& tag, const QString& parent, const QXmlStreamAttributes& attributes, SXmlPlace place)
        : tagName(tag), parentName(parent), held(attributes), asked(static_cast<std::size_t>(held.size())), where(place)
    {}

    const QString& tag() const { return tagName; }
    const QString& parent() const { return parentName; }
    bool is(const char* tag) const { return tagName == QLatin1String(tag); }
    SXmlPlace place() const { return where; }

    bool has(const QString& name) const { return find(name) != nullptr; }
    /// Empty for one that is missing.
    QString text(const QString& name) const;
    /// 0 for one that is missing; 0 too, and noted, for a text that is no number of the kind.
    double number(const QString& name) const;
    qint32 integer(const QString& name) const;
    quint32 count(const QString& name) const;
    /// Any number but 0, or one of the words "true" and "yes".
    bool flag(const QString& name) const;

    /// The names of those that were read as numbers and weren't any.
    const std::vector<QString>& notNumbers() const { return noted; }

    /// Those that begin so are known, though they say nothing beside the others.
    void know(const char* prefix) const;
    /// The element is left out with all attributes, and whoever does so reports it.
    void passOver() const { asked.assign(asked.size(), true); }
    /// The names of those that no reader has asked for; none where all are like that, for then the element alone matters.
    std::vector<QString> unknown() const;

private:
    const QXmlStreamAttribute* find(const QString& name) const;
    template <class TConvert>
    auto converted(const QString& name, TConvert&& convert) const;

    QString tagName;
    QString parentName;
    QXmlStreamAttributes held;
    mutable std::vector<bool> asked; ///< of each that is held
    SXmlPlace where;
    mutable int next = 0; ///< where the one after that found last is
    mutable std::vector<QString> noted;
};

} // namespace NBrenmark
