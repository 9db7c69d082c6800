// The three ways to run a form of the settings file: reading it from a stream, reading a record in memory, and
// writing. Reading a record is stricter, for it decides whether a guess about its layout was right.
#include "analysis/entry_form.h"

#include "analysis/nd_data.h"
#include "analysis/own_geometry.h"
#include "core/log.h"
#include "core/messages.h"
#include "core/stop_flag.h"
#include "core/versioned_stream.h"
#include "model/geometry_groups.h"

#include <QByteArray>
#include <QColor>
#include <QIODevice>
#include <QtEndian>

#include <stdexcept>

namespace NBrenmark {

void IEntryForm::text(const char* name, std::string& value)
{
    QString shown = QString::fromStdString(value);
    text(name, shown);
    if (isReading())
        value = shown.toStdString();
}

void IEntryForm::dropObsolete(std::initializer_list<QString*> texts)
{
    for (QString* text : texts) {
        if (!text->isEmpty())
            reportOnce(eUpgraded, NLogTitle::settings, messageText(eMessageSettingsObsolete).toStdString());
        text->clear();
    }
}

void IEntryForm::integers(const char* name, std::set<qint32>& values)
{
    std::vector<qint32> list(values.begin(), values.end());
    integers(name, list);
    if (isReading())
        values = std::set<qint32>(list.begin(), list.end());
}

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
    integer(name, stored);
    const qint64 left = stream.bytesLeft();
    if (stored < 0 || stored > left / elementBytes)
        throw std::length_error(placeIn(stream) + std::to_string(stored) + " entries of " + name + " announced, " +
                                std::to_string(left) + " bytes follow");
    return static_cast<quint32>(stored);
}

void CInEntryForm::real(const char* name, double& value)
{
    stream >> value;
    check(name);
}

void CInEntryForm::integer(const char* name, qint32& value)
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

void CInEntryForm::flag(const char* name, bool& value)
{
    const qint8 stored = byte(name);
    if (record != nullptr && stored != 0 && stored != 1)
        throw std::runtime_error(placeIn(stream) + name + " is no flag");
    value = stored != 0;
}

void CInEntryForm::strictFlag(const char* name, bool& value) { value = byte(name) == 1; }

void CInEntryForm::text(const char* name, QString& value)
{
    stream >> value;
    check(name);
}

void CInEntryForm::point(const char* name, C3DPoint& value)
{
    stream >> value.x >> value.y >> value.z;
    check(name);
}

void CInEntryForm::rgb(const char* name, QColor& value)
{
    qint32 red = 0, green = 0, blue = 0;
    stream >> red >> green >> blue;
    check(name);
    const QColor stored(qBound(0, red, 255), qBound(0, green, 255), qBound(0, blue, 255));
    const bool isColour = stored.red() == red && stored.green() == green && stored.blue() == blue;
    const std::string text =
        name + (" (" + std::to_string(red)) + ", " + std::to_string(green) + ", " + std::to_string(blue) + ")";
    if (!isColour && record != nullptr)
        throw std::runtime_error(placeIn(stream) + text + " is no colour");
    if (!isColour)
        report(eRepaired, NLogTitle::settings, placeIn(stream) + text + " brought to 0 to 255.");
    value = stored;
}

void CInEntryForm::colour(const char* name, QColor& value)
{
    stream >> value;
    check(name);
}

void CInEntryForm::integers(const char* name, std::vector<qint32>& values)
{
    values.resize(count(name, 0, 4));
    for (qint32& value : values)
        stream >> value;
    check(name);
}

void CInEntryForm::vectors(const char* name, std::vector<NField::CNdData>& values)
{
    const quint32 announced = count(name, 0, 4);
    values.clear();
    values.reserve(announced);
    qint64 left = stream.bytesLeft();
    for (quint32 i = 0; i < announced; ++i) {
        if (i % 4096 == 0)
            leaveIfStopped();
        if (!values.emplace_back().readWithin(stream, left))
            throw std::runtime_error(placeIn(stream) + name + ": entry " + std::to_string(i) + " ended early");
    }
}

void CInEntryForm::geometry(const char* name, std::shared_ptr<GeometryGroups>& groups)
{
    bool isThere = false;
    flag(name, isThere);
    groups.reset();
    if (!isThere)
        return;
    const QByteArray ahead = stream.device()->peek(4);
    groups = readOwnGeometry(stream);
    check(name);
    const quint32 announced = ahead.size() == 4 ? qFromBigEndian<quint32>(ahead.constData()) : 0;
    if (record != nullptr && groups->count() != announced)
        throw std::runtime_error(placeIn(stream) + name + " with a group of no known shape");
    wordsMet += groups->count();
}

void CInEntryForm::unlaid(const char* name, QByteArray& value,
                          const std::function<qint64(const QByteArray& rest)>& lengthIn)
{
    if (record == nullptr)
        throw std::logic_error(std::string(name) + " outside of a record");
    const int begin = static_cast<int>(stream.device()->pos());
    const int left = record->size() - begin;
    const qint64 length = lengthIn(QByteArray::fromRawData(record->constData() + begin, left));
    if (length < 0 || length > left)
        throw std::runtime_error(placeIn(stream) + name + ": nothing tells where it ends");
    value = record->mid(begin, static_cast<int>(length));
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

void COutEntryForm::real(const char*, double& value) { stream << value; }
void COutEntryForm::integer(const char*, qint32& value) { stream << value; }
void COutEntryForm::flag(const char*, bool& value) { stream << value; }
void COutEntryForm::strictFlag(const char*, bool& value) { stream << value; }
void COutEntryForm::text(const char*, QString& value) { stream << value; }
void COutEntryForm::point(const char*, C3DPoint& value) { stream << value.x << value.y << value.z; }
void COutEntryForm::colour(const char*, QColor& value) { stream << value; }

void COutEntryForm::rgb(const char*, QColor& value)
{
    stream << qint32(value.red()) << qint32(value.green()) << qint32(value.blue());
}

void COutEntryForm::integers(const char*, std::vector<qint32>& values)
{
    stream << qint32(values.size());
    for (const qint32 value : values)
        stream << value;
}

void COutEntryForm::vectors(const char*, std::vector<NField::CNdData>& values)
{
    stream << qint32(values.size());
    for (NField::CNdData& vector : values)
        vector.write(stream, nullptr);
}

void COutEntryForm::geometry(const char*, std::shared_ptr<GeometryGroups>& groups)
{
    stream << (groups != nullptr);
    if (groups != nullptr)
        writeOwnGeometry(stream, *groups);
}

} // namespace NBrenmark
