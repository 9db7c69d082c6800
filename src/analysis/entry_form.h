#pragma once
// What the forms of selections, queries and fields are run with. A form names each value once, in the order of
// the settings file; the form's kind decides what becomes of it: read from the stream, written to it, or named by
// its name (io/text). Values have the encodings of CVersionedStream.

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

class CVersionedStream;
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

    virtual void real(const char* name, double& value) = 0;
    virtual void integer(const char* name, qint32& value) = 0;
    /// One byte, true unless it is 0.
    virtual void flag(const char* name, bool& value) = 0;
    /// One byte, true only if it is 1.
    virtual void strictFlag(const char* name, bool& value) = 0;
    virtual void text(const char* name, QString& value) = 0;
    void text(const char* name, std::string& value);
    /// Three reals.
    virtual void point(const char* name, C3DPoint& value) = 0;
    /// Red, green and blue, 0 to 255 each, as three integers.
    virtual void rgb(const char* name, QColor& value) = 0;
    /// In the stream's own form, 11 bytes.
    virtual void colour(const char* name, QColor& value) = 0;
    /// How many there are, then each.
    virtual void integers(const char* name, std::vector<qint32>& values) = 0;
    void integers(const char* name, std::set<qint32>& values);
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

/// Reads. Whatever ends early or can't be believed ends in an exception that says where.
class CInEntryForm : public IEntryForm
{
public:
    explicit CInEntryForm(CVersionedStream& stream);
    /// On a stream over a record in memory. A flag that is neither 0 nor 1, a part of a colour beyond 255 and a shape
    /// that has no class end the reading here: they show that something else is there.
    CInEntryForm(CVersionedStream& stream, const QByteArray& record);

    bool isReading() const override { return true; }
    void real(const char* name, double& value) override;
    void integer(const char* name, qint32& value) override;
    void flag(const char* name, bool& value) override;
    void strictFlag(const char* name, bool& value) override;
    using IEntryForm::text;
    void text(const char* name, QString& value) override;
    void point(const char* name, C3DPoint& value) override;
    void rgb(const char* name, QColor& value) override;
    void colour(const char* name, QColor& value) override;
    using IEntryForm::integers;
    void integers(const char* name, std::vector<qint32>& values) override;
    void vectors(const char* name, std::vector<NField::CNdData>& values) override;
    void geometry(const char* name, std::shared_ptr<GeometryGroups>& groups) override;
    void unlaid(const char* name, QByteArray& value,
                const std::function<qint64(const QByteArray& rest)>& lengthIn) override;
    quint32 count(const char* name, quint32 present, qint64 elementBytes) override;

private:
    void check(const char* name) const;
    qint8 byte(const char* name);

    CVersionedStream& stream;
    const QByteArray* const record = nullptr; ///< null on a stream of the file itself
};

/// Writes the layouts of the current version.
class COutEntryForm : public IEntryForm
{
public:
    explicit COutEntryForm(CVersionedStream& stream) : stream(stream) {}

    bool isReading() const override { return false; }
    void real(const char* name, double& value) override;
    void integer(const char* name, qint32& value) override;
    void flag(const char* name, bool& value) override;
    void strictFlag(const char* name, bool& value) override;
    using IEntryForm::text;
    void text(const char* name, QString& value) override;
    void point(const char* name, C3DPoint& value) override;
    void rgb(const char* name, QColor& value) override;
    void colour(const char* name, QColor& value) override;
    using IEntryForm::integers;
    void integers(const char* name, std::vector<qint32>& values) override;
    void vectors(const char* name, std::vector<NField::CNdData>& values) override;
    void geometry(const char* name, std::shared_ptr<GeometryGroups>& groups) override;
    void unlaid(const char* name, QByteArray& value,
                const std::function<qint64(const QByteArray& rest)>& lengthIn) override;
    quint32 count(const char* name, quint32 present, qint64 elementBytes) override;

private:
    CVersionedStream& stream;
};

} // namespace NBrenmark
