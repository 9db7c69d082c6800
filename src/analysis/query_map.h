#pragma once
// Queries in named sections: those of a selection, or those of a data export.

#include "analysis/query.h"

#include <QList>
#include <QMap>
#include <QString>

namespace NBrenmark {

enum EQueryMapKind : qint32
{
    eExportQueries = 0,
    eSelectionQueries = 1
};

class QueryMap : public IFormed
{
public:
    explicit QueryMap(EQueryMapKind kind) : kind(kind) {}
    ~QueryMap() override { clear(); }
    QueryMap(const QueryMap&) = delete;
    QueryMap& operator=(const QueryMap&) = delete;

    /// After the other queries of the section, which is made when it is new.
    void add(const QString& section, std::unique_ptr<CQuery> query);
    void clear();
    int queryCount() const;
    /// The section of the query of that name; empty if there is none.
    QString sectionOf(const QString& id) const;
    const QMap<QString, QList<CQuery*>>& sections() const { return bySection; }

    /// False for a query of an unknown class: where it ends can't be known, and nothing after it can be read.
    /// \throws std::exception  the stream ends early, or announces more than follows
    bool read(CVersionedStream& stream, IProgressController* progress) override;
    /// The stream form. \throws std::runtime_error  a query of an unknown class
    void form(IEntryForm& f) override;

    /// The key form: a child of the handle for each query. A child whose query is of an unknown class stays.
    void writeConfiguration(NConfig::CConfigHandle& handle);
    void readConfiguration(NConfig::CConfigHandle& handle);

    const EQueryMapKind kind;

private:
    QMap<QString, QList<CQuery*>> bySection; ///< owned
};

} // namespace NBrenmark
