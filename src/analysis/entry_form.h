#pragma once
// What the forms of selections, queries and fields are run with. A form names each value once, in the order of
// the settings file; the form's kind decides what becomes of it: read from the stream, written to it (io/settings), or
// named by its name (io/text).

#include "core/read_write.h"
#include "core/version.h"
#include "maths/vector.h"

#include <QString>

#include <functional>
#include <initializer_list>
#include <memory>
#include <set>
#include <string>
#include <vector>

class QByteArray;
class QColor;

namespace NBrenmark {

class GeometryGroups;
namespace NField {
class CNdData;
}

class IEntryForm
{
public:
    virtual ~IEntryForm() = default;

    /// Whether the values come out of the file.
    virtual bool isReading() const = 0;
    bool since(quint32 major, quint32 minor, quint32 build) const
    {
        return version >= makeVersion(major, minor, build);
    }

    virtual void f64(const char* name, double& value) = 0;
    virtual void i32(const char* name, qint32& value) = 0;
    /// One byte, true unless it is 0.
    virtual void flag8(const char* name, bool& value) = 0;
    /// One byte, true only if it is 1.
    virtual void strictFlag8(const char* name, bool& value) = 0;
    virtual void text(const char* name, QString& value) = 0;
    void text(const char* name, std::string& value);
    /// Three reals.
    virtual void point(const char* name, C3DPoint& value) = 0;
    /// Red, green and blue, 0 to 255 each, as three integers.
    virtual void rgb(const char* name, QColor& value) = 0;
    /// In the stream's own form, 11 bytes.
    virtual void colour(const char* name, QColor& value) = 0;
    /// How many there are, then each.
    virtual void i32List(const char* name, std::vector<qint32>& values) = 0;
    void i32List(const char* name, std::set<qint32>& values);
    /// Points or values of a field: how many there are, then each.
    virtual void vectors(const char* name, std::vector<NField::CNdData>& values) = 0;
    /// A flag, and geometry if it is set; null stands for none.
    virtual void geometry(const char* name, std::shared_ptr<GeometryGroups>& groups) = 0;
    /// Bytes that have no layout here, as they are and uncounted.
    /// \param lengthIn  asked by a reading form alone: how many of the rest of the record they are; below 0 if no
    ///                  length fits
    virtual void unlaid(const char* name, QByteArray& value,
                        const std::function<qint64(const QByteArray& rest)>& lengthIn) = 0;
    /// The length of a list whose elements take at least elementBytes each: the one given, or the file's.
    /// \throws std::length_error  if the rest of the block can't hold them
    virtual quint32 count(const char* name, quint32 present, qint64 elementBytes) = 0;

    /// Empties texts whose meaning ended with the file's version; the log says so if one held anything.
    static void dropObsolete(std::initializer_list<QString*> texts);

    /// Runs body for values below a name of their own.
    virtual void group(const QString&, const std::function<void()>& body) { body(); }
    template <class TObject>
    void part(const char* name, TObject& object)
    {
        group(QString::fromLatin1(name), [&] { object.form(*this); });
    }

    quint32 version = currentFileVersion();
    quint32 edition = 0;
    /// Of what was read so far, the words that name a class of filters, of queries or a shape.
    quint32 wordsMet = 0;
};

/// What stores itself by one form in both directions.
class IFormed : public IReadWrite
{
public:
    virtual void form(IEntryForm& f) = 0;
    bool write(CVersionedStream& stream, IProgressController* progress) override;
    /// \throws std::exception  the stream ends early, or announces more than follows
    bool read(CVersionedStream& stream, IProgressController* progress) override;
};

} // namespace NBrenmark
