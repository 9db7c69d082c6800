#pragma once
// Extra values for each contact row of a legacy deck, named by the deck. They are moved through the
// legacy stream; nothing here reads them.

#include "maths/vector.h"

#include <QString>
#include <variant>
#include <vector>

namespace NBrenmark {

class IFileVisitorReader;
class IFileVisitorWriter;

/// SContactRecord::kind. A record of any other kind has no values.
enum EContactRecordKind : quint32
{
    eScalarRecord = 0,
    eVectorRecord = 1
};

struct SContactRecord
{
    quint32 kind = eScalarRecord;
    quint32 type = 0;
    QString name;
    double scale = 0.0;
    C3DPoint defaultValue;

    using Scalars = std::vector<double>;
    using Vectors = std::vector<C3DVector>;
    std::variant<std::monostate, Scalars, Vectors> values; ///< by kind, one a row

    /// Runs visit(array) if there is an array.
    template <class TVisit>
    void withValues(TVisit&& visit)
    {
        if (auto* scalars = std::get_if<Scalars>(&values))
            visit(*scalars);
        else if (auto* vectors = std::get_if<Vectors>(&values))
            visit(*vectors);
    }
    template <class TVisit>
    void withValues(TVisit&& visit) const
    {
        if (const auto* scalars = std::get_if<Scalars>(&values))
            visit(*scalars);
        else if (const auto* vectors = std::get_if<Vectors>(&values))
            visit(*vectors);
    }
    /// Makes an array of the record's kind.
    void makeValues();
    std::size_t rowCount() const;
};

class CContactRecordList
{
public:
    void read(IFileVisitorReader& visitor);
    void write(IFileVisitorWriter& visitor) const;

    quint32 count() const { return static_cast<quint32>(records.size()); }
    /// The length of the first record's array, which is that of all.
    quint32 rowCount() const { return records.empty() ? 0 : static_cast<quint32>(records.front().rowCount()); }
    /// New values are zero.
    void resizeRows(std::size_t count);
    void reserveRows(std::size_t count);
    void copyRow(quint32 source, quint32 target);
    void clear() { records.clear(); }

    std::vector<SContactRecord> records;
};

} // namespace NBrenmark
