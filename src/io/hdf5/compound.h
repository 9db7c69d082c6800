#pragma once
// Records that a file holds as compounds. A record is a list of its fields, in the order of their bytes: the stored name,
// and the member of the row that it comes from. Type, reading, writing and layouts of older versions follow from it.
//
// Numbers lie as a C compiler of this platform would lay them out, gaps included: sizes and offsets are part of the
// format. Texts have a fixed size and end with a zero byte.

#include "core/version.h"
#include "io/hdf5/read_audit.h"
#include "maths/quaternion.h"
#include "maths/vector.h"

#include <QString>
#include <H5Cpp.h>

#include <cstring>
#include <string>
#include <tuple>
#include <type_traits>
#include <vector>

namespace NBrenmark {

// ---------------------------------------------------------------- fields

/// How a member of that type is stored: so many numbers, flags being bytes.
template <class TMember>
struct SStoredMember
{
    using Number = std::conditional_t<std::is_same_v<TMember, double>, double,
                                      std::conditional_t<std::is_same_v<TMember, bool>, unsigned char, quint32>>;
    static_assert(sizeof(TMember) == sizeof(Number), "a number as it is stored");
    static constexpr hsize_t count = 1;
};
template <hsize_t numbers>
struct SStoredNumbers
{
    using Number = double;
    static constexpr hsize_t count = numbers;
};
template <>
struct SStoredMember<C3DVector> : SStoredNumbers<3>
{
};
template <>
struct SStoredMember<C3DPoint> : SStoredNumbers<3>
{
};
template <>
struct SStoredMember<CQuaternion> : SStoredNumbers<4>
{
};

template <class TRow, class TMember>
struct SField
{
    using Stored = SStoredMember<TMember>;
    using Number = typename Stored::Number;
    static constexpr std::size_t bytes = Stored::count * sizeof(Number);
    static constexpr std::size_t alignment = sizeof(Number);

    const char* name;
    TMember TRow::*member;
    quint32 firstVersion = 0;
    Number before{}; ///< stands in where an older version doesn't store it

    constexpr SField since(quint32 major, quint32 minor, quint32 build, Number value) const
    {
        return {name, member, makeVersion(major, minor, build), value};
    }
};

/// A text, terminator included. TMember is std::string or QString.
template <class TRow, class TMember, std::size_t size>
struct STextField
{
    static constexpr std::size_t bytes = size;
    static constexpr std::size_t alignment = 1;

    const char* name;
    TMember TRow::*member;
    quint32 firstVersion = 0;
};

/// Bytes that files leave unused.
template <std::size_t size>
struct SGap
{
    static constexpr std::size_t bytes = size;
    static constexpr std::size_t alignment = 1;

    quint32 firstVersion = 0;
};

template <class TRow, class TMember>
constexpr SField<TRow, TMember> field(const char* name, TMember TRow::*member)
{
    return {name, member};
}

template <std::size_t size, class TRow, class TMember>
constexpr STextField<TRow, TMember, size> text(const char* name, TMember TRow::*member)
{
    return {name, member};
}

// ---------------------------------------------------------------- layouts

/// Calls visit(field, offset) for each field that a version stores. \return the bytes of a record
template <class TFields, class TVisit>
constexpr std::size_t layOut(const TFields& fields, quint32 version, TVisit&& visit)
{
    std::size_t end = 0;
    std::size_t widest = 1;
    const auto roundedUp = [](std::size_t value, std::size_t unit) { return (value + unit - 1) / unit * unit; };
    const auto place = [&](const auto& each) {
        if (version < each.firstVersion)
            return;
        const std::size_t offset = roundedUp(end, each.alignment);
        visit(each, offset);
        end = offset + each.bytes;
        widest = widest < each.alignment ? each.alignment : widest;
    };
    std::apply([&](const auto&... each) { (place(each), ...); }, fields);
    return roundedUp(end, widest);
}

/// Bytes of a record of a version; of the current one if none is given.
template <class TFields>
constexpr std::size_t sizeOf(const TFields& fields, quint32 version = ~quint32(0))
{
    return layOut(fields, version, [](const auto&, std::size_t) {});
}

// ---------------------------------------------------------------- types

inline const H5::PredType& storedType(double) { return H5::PredType::NATIVE_DOUBLE; }
inline const H5::PredType& storedType(quint32) { return H5::PredType::NATIVE_UINT; }
inline const H5::PredType& storedType(unsigned char) { return H5::PredType::NATIVE_UCHAR; }

template <class TRow, class TMember>
void insertMember(H5::CompType& type, const SField<TRow, TMember>& each, std::size_t offset)
{
    using Field = SField<TRow, TMember>;
    const H5::PredType& number = storedType(typename Field::Number());
    const hsize_t count = Field::Stored::count;
    if (count == 1)
        type.insertMember(each.name, offset, number);
    else
        type.insertMember(each.name, offset, H5::ArrayType(number, 1, &count));
}

template <class TRow, class TMember, std::size_t size>
void insertMember(H5::CompType& type, const STextField<TRow, TMember, size>& each, std::size_t offset)
{
    type.insertMember(each.name, offset, H5::StrType(H5::PredType::C_S1, size));
}

template <std::size_t size>
void insertMember(H5::CompType&, const SGap<size>&, std::size_t)
{}

/// The compound of TRecord, which has a list `fields`; one type is used in memory and in the file.
template <class TRecord>
H5::CompType compoundOf(quint32 version = ~quint32(0))
{
    H5::CompType type(sizeOf(TRecord::fields, version));
    layOut(TRecord::fields, version, [&](const auto& each, std::size_t offset) { insertMember(type, each, offset); });
    return type;
}

// ---------------------------------------------------------------- values

inline double* numbersOf(C3DVector& value) { return &value.x; }
inline double* numbersOf(C3DPoint& value) { return &value.x; }
inline double* numbersOf(CQuaternion& value) { return &value.w; }
template <class TNumber>
TNumber* numbersOf(TNumber& value)
{
    return &value;
}

/// \throws unstorable_error  the text doesn't fit: a name that is cut may be another one's name
void putText(char* bytes, std::size_t size, const QString& text);
/// The text up to the terminator, or all of it if a damaged file holds none.
QString takenText(const char* bytes, std::size_t size);

template <class TRow, class TMember, class TObject>
void put(const SField<TRow, TMember>& each, const TObject& row, char* bytes)
{
    TMember value = row.*each.member;
    std::memcpy(bytes, numbersOf(value), each.bytes);
}
template <class TRow, class TMember, class TObject>
void take(const SField<TRow, TMember>& each, TObject& row, const char* bytes)
{
    using Field = SField<TRow, TMember>;
    if constexpr (Field::Stored::count > 1) {
        std::memcpy(numbersOf(row.*each.member), bytes, each.bytes);
    }
    else {
        typename Field::Number number;
        std::memcpy(&number, bytes, each.bytes);
        if constexpr (std::is_same_v<TMember, bool>)
            CReadAudit::compareFlag(number, "column", each.name);
        row.*each.member = static_cast<TMember>(number);
    }
}

template <class TRow, class TMember, std::size_t size, class TObject>
void put(const STextField<TRow, TMember, size>& each, const TObject& row, char* bytes)
{
    if constexpr (std::is_same_v<TMember, QString>)
        putText(bytes, size, row.*each.member);
    else
        putText(bytes, size, QString::fromStdString(row.*each.member));
}
template <class TRow, class TMember, std::size_t size, class TObject>
void take(const STextField<TRow, TMember, size>& each, TObject& row, const char* bytes)
{
    if constexpr (std::is_same_v<TMember, QString>)
        row.*each.member = takenText(bytes, size);
    else
        row.*each.member = takenText(bytes, size).toStdString();
}

template <std::size_t size, class TObject>
void put(const SGap<size>&, const TObject&, char*)
{}
template <std::size_t size, class TObject>
void take(const SGap<size>&, TObject&, const char*)
{}

/// Gives a row what stands in for a field that its version doesn't store. Texts remain empty.
template <class TRow, class TMember, class TObject>
void standIn(const SField<TRow, TMember>& each, TObject& row)
{
    if constexpr (SField<TRow, TMember>::Stored::count == 1)
        row.*each.member = static_cast<TMember>(each.before);
}
template <class TField, class TObject>
void standIn(const TField&, TObject&)
{}

/// The bytes of rows, one record after the other.
/// \throws unstorable_error  a text doesn't fit
template <class TRecord>
std::vector<char> recordsOf(const std::vector<typename TRecord::Row>& rows)
{
    constexpr std::size_t size = sizeOf(TRecord::fields);
    std::vector<char> bytes(rows.size() * size, '\0');
    char* record = bytes.data();
    for (const typename TRecord::Row& row : rows) {
        layOut(TRecord::fields, ~quint32(0),
               [&](const auto& each, std::size_t offset) { put(each, row, record + offset); });
        record += size;
    }
    return bytes;
}

/// The row that a record of a version holds.
template <class TRecord>
typename TRecord::Row rowOf(const char* record, quint32 version)
{
    typename TRecord::Row row{};
    const auto standInIfAbsent = [&](const auto& each) {
        if (version < each.firstVersion)
            standIn(each, row);
    };
    std::apply([&](const auto&... each) { (standInIfAbsent(each), ...); }, TRecord::fields);
    layOut(TRecord::fields, version, [&](const auto& each, std::size_t offset) { take(each, row, record + offset); });
    return row;
}

} // namespace NBrenmark
