#pragma once
// The forms of what a settings file holds, run over its stream. Values have the encodings of CVersionedStream.

#include "analysis/entry_form.h"

namespace NBrenmark {

class CVersionedStream;

/// Reads. Whatever ends early or can't be believed ends in an exception that says where.
class CInEntryForm : public IEntryForm
{
public:
    explicit CInEntryForm(CVersionedStream& stream);
    /// On a stream over a record in memory. A flag that is neither 0 nor 1, a part of a colour beyond 255 and a shape
    /// that has no class end the reading here: they show that something else is there.
    CInEntryForm(CVersionedStream& stream, const QByteArray& record);

    bool isReading() const override { return true; }
    void f64(const char* name, double& value) override;
    void i32(const char* name, qint32& value) override;
    void flag8(const char* name, bool& value) override;
    void strictFlag8(const char* name, bool& value) override;
    using IEntryForm::text;
    void text(const char* name, QString& value) override;
    void point(const char* name, C3DPoint& value) override;
    void rgb(const char* name, QColor& value) override;
    void colour(const char* name, QColor& value) override;
    using IEntryForm::i32List;
    void i32List(const char* name, std::vector<qint32>& values) override;
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
    void f64(const char* name, double& value) override;
    void i32(const char* name, qint32& value) override;
    void flag8(const char* name, bool& value) override;
    void strictFlag8(const char* name, bool& value) override;
    using IEntryForm::text;
    void text(const char* name, QString& value) override;
    void point(const char* name, C3DPoint& value) override;
    void rgb(const char* name, QColor& value) override;
    void colour(const char* name, QColor& value) override;
    using IEntryForm::i32List;
    void i32List(const char* name, std::vector<qint32>& values) override;
    void vectors(const char* name, std::vector<NField::CNdData>& values) override;
    void geometry(const char* name, std::shared_ptr<GeometryGroups>& groups) override;
    void unlaid(const char* name, QByteArray& value,
                const std::function<qint64(const QByteArray& rest)>& lengthIn) override;
    quint32 count(const char* name, quint32 present, qint64 elementBytes) override;

private:
    CVersionedStream& stream;
};

} // namespace NBrenmark
