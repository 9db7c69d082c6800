#pragma once
// Interactions: the coefficients of a pair of materials that touch.

#include <QMap>
#include <QString>
#include <QStringList>

namespace NBrenmark {

class IFileVisitorReader;
class IFileVisitorWriter;

/// Keyed by an unordered pair of names: the key is the smaller name, "~", the greater. A name that
/// holds "~" can't be told apart from a pair and is no supported input.
template <class TValue>
class CTwoQStringHash
{
public:
    static QString pairKey(const QString& a, const QString& b)
    {
        return a < b ? a + QLatin1Char('~') + b : b + QLatin1Char('~') + a;
    }
    static QString firstName(const QString& key) { return key.section(QLatin1Char('~'), 0, 0); }
    static QString secondName(const QString& key) { return key.section(QLatin1Char('~'), 1, 1); }

    QMap<QString, TValue> entries;
};

class CInteraction
{
public:
    void read(IFileVisitorReader& visitor);
    void write(IFileVisitorWriter& visitor) const;

    double restitution = 0.5;
    double staticFriction = 0.5;
    double rollingFriction = 0.01;
};

/// Owns its interactions, in key order.
class InteractionMap : public CTwoQStringHash<CInteraction*>
{
public:
    InteractionMap() = default;
    ~InteractionMap();
    InteractionMap(const InteractionMap&) = delete;
    InteractionMap& operator=(const InteractionMap&) = delete;

    void read(IFileVisitorReader& visitor);
    void write(IFileVisitorWriter& visitor) const;

    /// Stores under the pair's key. An entry that is there is replaced and deleted.
    void set(const QString& a, const QString& b, CInteraction* interaction);
    /// The same under a key as a file holds it.
    void setByKey(const QString& key, CInteraction* interaction);
    /// The interaction or null.
    CInteraction* find(const QString& a, const QString& b) const;
    /// The other names of all pairs that hold the material, in key order; "a~a" gives "a" once.
    QStringList partnersOf(const QString& material) const;
    void clear();
};

} // namespace NBrenmark
