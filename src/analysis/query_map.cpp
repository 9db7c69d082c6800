// Queries in sections, read from and written to a selection or the configuration.
#include "analysis/query_map.h"

#include "analysis/query_kinds.h"
#include "config/config_manager.h"
#include "core/log.h"

#include <stdexcept>
#include <utility>

namespace NBrenmark {

/// A name and a count.
static constexpr qint64 leastSectionBytes = 4 + 4;
/// A class and what every query has: six doubles, six texts, three numbers, four flags, two points.
static constexpr qint64 leastQueryBytes = 4 + 6 * 8 + 6 * 4 + 3 * 4 + 4 + 2 * 24;

void QueryMap::add(const QString& section, std::unique_ptr<CQuery> query)
{
    if (query != nullptr)
        bySection[section].append(query.release());
}

void QueryMap::clear()
{
    for (const QList<CQuery*>& queries : std::as_const(bySection))
        qDeleteAll(queries);
    bySection.clear();
}

int QueryMap::queryCount() const
{
    int count = 0;
    for (const QList<CQuery*>& queries : bySection)
        count += queries.size();
    return count;
}

QString QueryMap::sectionOf(const QString& id) const
{
    for (auto section = bySection.begin(); section != bySection.end(); ++section)
        for (const CQuery* query : section.value())
            if (query->id == id)
                return section.key();
    return QString();
}

// ---------------------------------------------------------------- the stream form

/// A query of an unknown class.
class unknown_query : public std::runtime_error
{
public:
    explicit unknown_query(const QString& identifier)
        : std::runtime_error("Query of the unknown class \"" + identifier.left(80).toStdString() + "\"")
    {}
};

static void queryForm(IEntryForm& f, QueryMap& map, const QString& section, CQuery* present)
{
    QString identifier = present != nullptr ? present->name() : QString();
    f.text("class", identifier);
    if (present != nullptr) {
        present->form(f);
        return;
    }
    std::unique_ptr<CQuery> query = createQuery(identifier, 0);
    if (query == nullptr)
        throw unknown_query(identifier);
    ++f.wordsMet;
    query->form(f);
    map.add(section, std::move(query));
}

void QueryMap::form(IEntryForm& f)
{
    if (f.isReading())
        clear();
    const QStringList names = bySection.keys();
    const quint32 sectionCount = f.count("sections", static_cast<quint32>(names.size()), leastSectionBytes);
    for (quint32 i = 0; i < sectionCount; ++i) {
        QString section = f.isReading() ? QString() : names.at(static_cast<int>(i));
        f.group(QString::number(i), [&] {
            f.text("name", section);
            const QList<CQuery*> present = bySection[section];
            const quint32 queryCount =
                f.count("queries", static_cast<quint32>(f.isReading() ? 0 : present.size()), leastQueryBytes);
            for (quint32 j = 0; j < queryCount; ++j)
                f.group(QString::number(j), [&] {
                    queryForm(f, *this, section, f.isReading() ? nullptr : present.at(static_cast<int>(j)));
                });
        });
    }
}

bool QueryMap::read(CVersionedStream& stream, IProgressController* progress)
{
    try {
        return IFormed::read(stream, progress);
    }
    catch (const unknown_query& error) {
        report(eRemark, NLogTitle::settings, error.what()); // whose block it is counts the loss
        return false;
    }
}

// ---------------------------------------------------------------- the key form

static const char* const sectionKey = "SECTION";
static const char* const classKey = "QUERY TYPE";

void QueryMap::writeConfiguration(NConfig::CConfigHandle& handle)
{
    NConfig::CConfigManager& manager = handle.manager();
    for (auto section = bySection.begin(); section != bySection.end(); ++section) {
        for (CQuery* query : section.value()) {
            std::unique_ptr<NConfig::CConfigHandle> child;
            if (!query->configurationKey.empty())
                child = manager.handle(handle.basePath().child(query->configurationKey), false);
            if (child == nullptr)
                child = manager.createUniqueChild(handle.basePath());
            query->configurationKey = child->basePath().elements().back();
            child->value<QString>(NConfig::CKeyPath::fromString(sectionKey)) = section.key();
            child->value<QString>(NConfig::CKeyPath::fromString(classKey)) = query->name();
            query->writeConfiguration(*child);
        }
    }
}

void QueryMap::readConfiguration(NConfig::CConfigHandle& handle)
{
    clear();
    NConfig::CConfigManager& manager = handle.manager();
    for (const NConfig::CKeyPath& key : manager.childKeys(handle.basePath())) {
        NConfig::CConfigHandle child(manager, NConfig::CKeyPath(handle.basePath(), key));
        const QString section = child.value<QString>(NConfig::CKeyPath::fromString(sectionKey));
        const QString identifier = child.value<QString>(NConfig::CKeyPath::fromString(classKey));
        std::unique_ptr<CQuery> query = createQuery(identifier, 0);
        if (query == nullptr) {
            report(eCarriedUnread, NLogTitle::configuration,
                   child.basePath().toString() + ": query of the unknown class \"" + identifier.left(80).toStdString() +
                       "\": its keys stay as they are.");
            continue;
        }
        query->configurationKey = key.toString();
        query->readConfiguration(child);
        add(section, std::move(query));
    }
}

} // namespace NBrenmark
