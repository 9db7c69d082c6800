// The three ways to run a form of the settings file: reading it from a stream, reading a record in memory, and
// writing. Reading a record is stricter, for it decides whether a guess about its layout was right.
#include "io/settings/entry_forms.h"

#include "analysis/nd_data.h"
#include "core/deck/file_families.h"
#include "core/log.h"
#include "core/stop_flag.h"
#include "core/versioned_stream.h"
#include "model/geometry_groups.h"
#include "visitors/settings_streams.h"

#include <QByteArray>
#include <QColor>
#include <QIODevice>
#include <QtEndian>

#include <stdexcept>

namespace NBrenmark {

// ---------------------------------------------------------------- reading

CInEntryForm::CInEntryForm(CVersionedStream& stream) : stream(stream)
{
    version = stream.fileVersion();
    edition = stream.edition;
}

CInEntryForm::CInEntryForm(CVersionedStream& stream, const QByteArray& record) : stream(stream), record(&record)
{
    version = stream.fileVersion();
    edition = stream.edition;
}

static std::string placeIn(const CVersionedStream& stream)
{
    return "byte " + std::to_string(stream.device() != nullptr ? stream.device()->pos() : 0) + ": ";
}

void CInEntryForm::check(const char* name) const
{
    if (stream.status() != QDataStream::Ok)
        throw std::runtime_error(placeIn(stream) + name + " ended early");
}

quint32 CInEntryForm::count(const char* name, quint32, qint64 elementBytes)
{
    qint32 stored = 0;
    i32(name, stored);
    const qint64 left = stream.bytesLeft();
    if (stored < 0 || stored > left / elementBytes) // tested before any memory is taken
        throw std::length_error(placeIn(stream) + std::to_string(stored) + " entries of " + name + " announced, " +
                                std::to_string(left) + " bytes follow");
    return static_cast<quint32>(stored);
}

void CInEntryForm::f64(const char* name, double& value)
{
    stream >> value;
    check(name);
}

void CInEntryForm::i32(const char* name, qint32& value)
{
    stream >> value;
    check(name);
}

qint8 CInEntryForm::byte(const char* name)
{
    qint8 value = 0;
    stream >> value;
    check(name);
    return value;
}

void CInEntryForm::flag8(const char* name, bool& value)
{
    const qint8 stored = byte(name);
    if (record != nullptr && stored != 0 && stored != 1)
        throw std::runtime_error(placeIn(stream) + name + " isn't a flag");
    value = stored != 0;
}

void CInEntryForm::strictFlag8(const char* name, bool& value) { value = byte(name) == 1; } // a 2 means no

/// A length in bytes, then UTF-16; all bits set for a null text. Not by the stream's own operator, which takes memory
/// for a damaged length up to the end of the file.
void CInEntryForm::text(const char* name, QString& value)
{
    constexpr quint32 nullText = 0xFFFFFFFFu;
    quint32 bytes = 0;
    stream >> bytes;
    check(name);
    value = QString();
    if (bytes == nullText)
        return;
    if (bytes % sizeof(QChar) != 0 || bytes > stream.bytesLeft()) // half a letter, or more than there is
        stream.setStatus(QDataStream::ReadPastEnd);
    check(name);
    value = QString(static_cast<int>(bytes / sizeof(QChar)), Qt::Uninitialized);
    if (stream.readRawData(reinterpret_cast<char*>(value.data()), static_cast<int>(bytes)) != static_cast<int>(bytes))
        stream.setStatus(QDataStream::ReadPastEnd);
    check(name);
    qFromBigEndian<ushort>(value.data(), value.size(), value.data()); // letters are big-endian like the numbers
}

void CInEntryForm::point(const char* name, C3DPoint& value)
{
    stream >> value.x >> value.y >> value.z;
    check(name);
}

void CInEntryForm::rgb(const char* name, QColor& value)
{
    qint32 red = 0, green = 0, blue = 0; // 0 to 255
    stream >> red >> green >> blue;
    check(name);
    const QColor stored(qBound(0, red, 255), qBound(0, green, 255), qBound(0, blue, 255));
    const bool isColour = stored.red() == red && stored.green() == green && stored.blue() == blue;
    const std::string text =
        name + (" (" + std::to_string(red)) + ", " + std::to_string(green) + ", " + std::to_string(blue) + ")";
    if (!isColour && record != nullptr)
        throw std::runtime_error(placeIn(stream) + text + " isn't a colour");
    if (!isColour)
        report(eRepaired, NLogTitle::settings, placeIn(stream) + text + " brought to 0 to 255.");
    value = stored;
}

void CInEntryForm::colour(const char* name, QColor& value)
{
    stream >> value;
    check(name);
}

void CInEntryForm::i32List(const char* name, std::vector<qint32>& values)
{
    values.resize(count(name, 0, 4));
    for (qint32& value : values)
        stream >> value;
    check(name);
}

/// A vector, of bytes that the caller counts: to ask a file for its size at each of a million points takes as long as
/// to read them.
/// \param left  how many the block still has; less by what was read
static bool readWithin(CVersionedStream& stream, qint64& left, NField::CNdData& vector)
{
    qint32 stored = 0;
    stream >> stored;
    left -= 4; // the count itself
    if (stream.status() != QDataStream::Ok || stored < 0 || stored > left / 8)
        return false;
    vector.resize(static_cast<quint32>(stored));
    for (quint32 i = 0; i < vector.size(); ++i)
        stream >> vector[i];
    left -= 8 * qint64(stored);
    return stream.status() == QDataStream::Ok;
}

void CInEntryForm::vectors(const char* name, std::vector<NField::CNdData>& values)
{
    const quint32 announced = count(name, 0, 4); // an empty vector is a count and no more
    values.clear();
    values.reserve(announced);
    qint64 left = stream.bytesLeft();
    for (quint32 i = 0; i < announced; ++i) {
        if (i % 4096 == 0) // to ask for a stop costs more than to read a vector
            leaveIfStopped();
        if (!readWithin(stream, left, values.emplace_back()))
            throw std::runtime_error(placeIn(stream) + name + ": entry " + std::to_string(i) + " ended early");
    }
}

void CInEntryForm::geometry(const char* name, std::shared_ptr<GeometryGroups>& groups)
{
    bool isThere = false;
    flag8(name, isThere);
    groups.reset();
    if (!isThere)
        return;
    const QByteArray ahead = stream.device()->peek(4); // how many groups, unknown shapes included
    groups = NLegacyFamily::readOwnGeometry(stream);
    check(name);
    const quint32 announced = ahead.size() == 4 ? qFromBigEndian<quint32>(ahead.constData()) : 0;
    if (record != nullptr && groups->count() != announced)
        throw std::runtime_error(placeIn(stream) + name + " with a group of no known shape");
    wordsMet += groups->count(); // the word of each shape was known
}

void CInEntryForm::unlaid(const char* name, QByteArray& value,
                          const std::function<qint64(const QByteArray& rest)>& lengthIn)
{
    if (record == nullptr) // elsewhere nothing bounds the search for the end
        throw std::logic_error(std::string(name) + " outside of a record");
    const int begin = static_cast<int>(stream.device()->pos());
    const int left = record->size() - begin;
    const qint64 length = lengthIn(QByteArray::fromRawData(record->constData() + begin, left));
    if (length < 0 || length > left)
        throw std::runtime_error(placeIn(stream) + name + ": where it ends can't be found out");
    value = record->mid(begin, static_cast<int>(length)); // carried as they are
    stream.device()->seek(begin + length);
}

// ---------------------------------------------------------------- writing

quint32 COutEntryForm::count(const char*, quint32 present, qint64)
{
    stream << qint32(present);
    return present;
}

void COutEntryForm::unlaid(const char*, QByteArray& value, const std::function<qint64(const QByteArray&)>&)
{
    stream.writeRawData(value.constData(), value.size());
}

void COutEntryForm::f64(const char*, double& value) { stream << value; }
void COutEntryForm::i32(const char*, qint32& value) { stream << value; }
void COutEntryForm::flag8(const char*, bool& value) { stream << value; } // a byte, 0 or 1
void COutEntryForm::strictFlag8(const char*, bool& value) { stream << value; }
void COutEntryForm::text(const char*, QString& value) { stream << value; } // a null text stays one
void COutEntryForm::point(const char*, C3DPoint& value) { stream << value.x << value.y << value.z; }
void COutEntryForm::colour(const char*, QColor& value) { stream << value; } // a kind, and five parts of 16 bits

void COutEntryForm::rgb(const char*, QColor& value)
{
    stream << qint32(value.red()) << qint32(value.green()) << qint32(value.blue());
}

void COutEntryForm::i32List(const char*, std::vector<qint32>& values)
{
    stream << qint32(values.size());
    for (const qint32 value : values)
        stream << value;
}

void COutEntryForm::vectors(const char*, std::vector<NField::CNdData>& values)
{
    stream << qint32(values.size());
    for (NField::CNdData& vector : values)
        vector.form(*this);
}

void COutEntryForm::geometry(const char*, std::shared_ptr<GeometryGroups>& groups)
{
    stream << (groups != nullptr);
    if (groups != nullptr)
        NLegacyFamily::writeOwnGeometry(stream, *groups);
}

// ---------------------------------------------------------------- the door

bool NSettingsFamily::readForm(CVersionedStream& stream, const std::function<void(IEntryForm&)>& form)
{
    CInEntryForm f(stream);
    form(f);
    return true;
}

bool NSettingsFamily::writeForm(CVersionedStream& stream, const std::function<void(IEntryForm&)>& form)
{
    COutEntryForm f(stream);
    form(f);
    return stream.status() == QDataStream::Ok;
}

} // namespace NBrenmark
