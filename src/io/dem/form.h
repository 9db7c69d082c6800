#pragma once
// What a form is run with: CInForm reads, COutForm writes, both with the same operations, so that a
// form names each field once, in file order, for both directions. A field with a gate takes the
// value before where the version doesn't store it.

#include "core/cause.h"
#include "core/data_place.h"
#include "core/emptied.h"
#include "io/dem/array_group.h"
#include "io/dem/dem_block.h"
#include "io/dem/dem_data_stream.h"
#include "io/dem/gates.h"

#include <string>
#include <utility>

namespace NBrenmark {

/// Reports what couldn't be read of a block, and that the read goes on after it.
void reportSkippedBlock(const CDemDataStream& stream, const char* what, const std::exception& error);

class CInForm
{
public:
    static constexpr bool isReading = true;

    explicit CInForm(CDemDataStream& stream) : stream(stream) {}

    quint32 version() const { return stream.fileVersion(); }
    bool stores(const SGate& gate) const { return gate.holds(version()); }
    bool since(quint32 major, quint32 minor, quint32 build) const
    {
        return version() >= makeVersion(major, minor, build);
    }

    void f64(double& value) { take(value, "number"); }
    void f64(double& value, const SGate& gate, double before)
    {
        gated(gate, value, before, [&] { f64(value); });
    }
    /// An integer or enumerator of 32 bits.
    template <class TValue>
    void i32(TValue& value)
    {
        static_assert(sizeof(TValue) == 4, "a stored i32 keeps all its bits");
        qint32 stored = 0;
        take(stored, "number");
        value = static_cast<TValue>(stored);
    }
    template <class TValue>
    void i32(TValue& value, const SGate& gate, TValue before)
    {
        gated(gate, value, before, [&] { i32(value); });
    }
    void u64(quint64& value) { take(value, "number"); }
    /// An i32, true when it isn't 0.
    void flag(bool& value)
    {
        qint32 stored = 0;
        i32(stored);
        value = stored != 0;
    }
    void flag(bool& value, const SGate& gate, bool before)
    {
        gated(gate, value, before, [&] { flag(value); });
    }
    /// An i8, true when it isn't 0.
    void flag8(bool& value)
    {
        qint8 stored = 0;
        take(stored, "flag");
        value = stored != 0;
    }
    void flag8(bool& value, const SGate& gate, bool before)
    {
        gated(gate, value, before, [&] { flag8(value); });
    }
    void text(QString& value);
    void text(std::string& value);
    void text(QString& value, const SGate& gate, const QString& before)
    {
        gated(gate, value, before, [&] { text(value); });
    }
    /// Three numbers: a point or a vector.
    template <class TPoint>
    void point(TPoint& value)
    {
        f64(value.x);
        f64(value.y);
        f64(value.z);
    }
    template <class TPoint>
    void point(TPoint& value, const SGate& gate, const TPoint& before)
    {
        gated(gate, value, before, [&] { point(value); });
    }

    // Consumed, never kept.
    void dropF64(const SGate& gate = always)
    {
        double dropped = 0.0;
        f64(dropped, gate, 0.0);
    }
    void dropI32(qint32 = 0, const SGate& gate = always)
    {
        qint32 dropped = 0;
        i32(dropped, gate, 0);
    }

    void marker(quint32 expected) { checkMarker(stream, expected); }
    /// A count of elements that take at least elementBytes each.
    /// \throws std::length_error if the rest can't hold them; no memory is taken before, so four
    ///         damaged bytes never cost sixteen gigabytes
    quint32 count(const char* noun, qint64 elementBytes);
    /// The length of a list, which is then that long.
    template <class TList>
    void length(const char* noun, qint64 elementBytes, TList& list)
    {
        list.clear();
        list.resize(count(noun, elementBytes));
    }

    /// A block. What is damaged within costs its own rows: the log says so, and the read goes on after it. What isn't
    /// damage, such as a device that can't be read or too little memory, ends the read.
    /// \return false if the block was skipped
    template <class TBody>
    bool block(quint32 tag, const char* what, TBody&& body)
    {
        CDemBlock block(stream, tag, false);
        const CPlaceScope scope(placeAtWork().inBlock(what));
        bool whole = true;
        stream.rowsAtWork = 0;
        try {
            body();
            stream.checkStatus(what);
        }
        catch (const std::exception& error) {
            if (!meansDamage(error))
                throw;
            reportSkippedBlock(stream, what, error);
            block.skip();
            whole = false;
        }
        block.close();
        return whole;
    }

    /// The same for an object that holds nothing of a damaged block.
    template <class TObject, class TBody>
    void blockOf(quint32 tag, const char* what, TObject& object, TBody&& body)
    {
        CEmptiedUnlessWhole<TObject> reading(object);
        reading.whole = block(tag, what, body);
    }

    /// The same for two families, one after the other: the one that was read whole is kept.
    template <class TReader, class TFirst, class TSecond>
    void families(quint32 tag, const char* what, TReader& reader, TFirst& first, TSecond& second)
    {
        CEmptiedUnlessWhole<TFirst> readingFirst(first);
        CEmptiedUnlessWhole<TSecond> readingSecond(second);
        readingSecond.whole = block(tag, what, [&] {
            first.read(reader);
            stream.checkStatus(what);
            readingFirst.whole = true;
            second.read(reader);
        });
    }

    /// A group of arrays of so many rows: body(arrays) moves each by arrays.rows.
    /// \param rowBytes  of memory that each of them takes, if the arrays that aren't stored count as well
    template <class TBody>
    void group(bool deflated, quint32 rows, TBody&& body, quint64 rowBytes = 0)
    {
        CArrayGroupReader arrays(stream, deflated, rows, rowBytes);
        body(arrays);
        arrays.finish();
    }

    CDemDataStream& stream;

private:
    template <class TValue>
    void take(TValue& value, const char* what)
    {
        stream >> value;
        if (stream.status() != QDataStream::Ok)
            stream.checkStatus(what);
    }
    template <class TValue, class TRead>
    void gated(const SGate& gate, TValue& value, TValue before, TRead&& read)
    {
        if (stores(gate))
            read();
        else
            value = before;
    }
};

class COutForm
{
public:
    static constexpr bool isReading = false;

    explicit COutForm(CDemDataStream& stream) : stream(stream) {}

    quint32 version() const { return stream.fileVersion(); }
    bool stores(const SGate& gate) const { return gate.holds(version()); }
    bool since(quint32 major, quint32 minor, quint32 build) const
    {
        return version() >= makeVersion(major, minor, build);
    }

    void f64(double value) { stream << value; }
    void f64(double value, const SGate& gate, double)
    {
        gated(gate, [&] { f64(value); });
    }
    template <class TValue>
    void i32(TValue value)
    {
        static_assert(sizeof(TValue) == 4, "a stored i32 keeps all its bits");
        stream << static_cast<qint32>(value);
    }
    template <class TValue>
    void i32(TValue value, const SGate& gate, TValue)
    {
        gated(gate, [&] { i32(value); });
    }
    void u64(quint64 value) { stream << value; }
    void flag(bool value) { i32(qint32(value)); }
    void flag(bool value, const SGate& gate, bool)
    {
        gated(gate, [&] { flag(value); });
    }
    void flag8(bool value) { stream << qint8(value); }
    void flag8(bool value, const SGate& gate, bool)
    {
        gated(gate, [&] { flag8(value); });
    }
    void text(const QString& value) { stream << value; }
    void text(const std::string& value) { stream << QString::fromStdString(value); }
    void text(const QString& value, const SGate& gate, const QString&)
    {
        gated(gate, [&] { text(value); });
    }
    template <class TPoint>
    void point(const TPoint& value)
    {
        f64(value.x);
        f64(value.y);
        f64(value.z);
    }
    template <class TPoint>
    void point(const TPoint& value, const SGate& gate, const TPoint&)
    {
        gated(gate, [&] { point(value); });
    }

    // What a reader drops still has its place.
    void dropF64(const SGate& gate = always) { f64(0.0, gate, 0.0); }
    void dropI32(qint32 written = 0, const SGate& gate = always) { i32(written, gate, 0); }

    void marker(quint32 value) { stream << value; }
    template <class TList>
    void length(const char*, qint64, const TList& list)
    {
        i32(static_cast<quint32>(list.size()));
    }

    template <class TBody>
    void block(quint32 tag, const char*, TBody&& body)
    {
        CDemBlock block(stream, tag, true);
        body();
        block.close();
    }

    template <class TBody>
    void group(bool deflated, quint32 rows, TBody&& body)
    {
        CArrayGroupWriter arrays(stream, deflated, rows);
        body(arrays);
        arrays.finish();
    }

    CDemDataStream& stream;

private:
    template <class TWrite>
    void gated(const SGate& gate, TWrite&& write)
    {
        if (stores(gate))
            write();
    }
};

} // namespace NBrenmark
