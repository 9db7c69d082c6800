#pragma once
// The one place through which all bulk arrays of the legacy family pass. A group is a few arrays one
// after the other, in the byte order of the machine, raw or as one zlib stream.

#include "io/dem/zlib_stream.h"

#include <QString>
#include <memory>
#include <type_traits>
#include <vector>

namespace NBrenmark {

class CDemDataStream;

/// Moves raw arrays from the stream.
class ReadAttribute
{
public:
    ReadAttribute(CDemDataStream& stream, quint32 count) : count(count), stream(&stream) {}
    virtual void transfer(void* data, quint32 bytes);
    virtual ~ReadAttribute() = default;
    /// The group is complete: the stream is after it.
    virtual void finish() {}
    /// The most bytes that what is left of the stream can give.
    virtual qint64 mostBytes() const;

    quint32 count; ///< rows of each array

protected:
    CDemDataStream* stream; // not owned
};

class ReadAttributeCompressed : public ReadAttribute
{
public:
    ReadAttributeCompressed(CDemDataStream& stream, quint32 count);
    void transfer(void* data, quint32 bytes) override;
    void finish() override;
    qint64 mostBytes() const override;

private:
    std::unique_ptr<zipio> zip;
};

/// Moves raw arrays to the stream.
class WriteAttribute
{
public:
    WriteAttribute(CDemDataStream& stream, quint32 count) : count(count), stream(&stream) {}
    virtual void transfer(const void* data, quint32 bytes);
    virtual ~WriteAttribute() = default;
    virtual void finish() {}

    quint32 count; ///< rows of each array

protected:
    CDemDataStream* stream; // not owned
};

class WriteAttributeCompressed : public WriteAttribute
{
public:
    WriteAttributeCompressed(CDemDataStream& stream, quint32 count);
    void transfer(const void* data, quint32 bytes) override;
    void finish() override;

private:
    std::unique_ptr<zipio> zip;
};

/// Whether the user wants writers to deflate groups that are large enough.
bool compressArrays();

/// Groups of fewer rows, or of at most so many bytes, stay raw: zlib would not be worth its start.
constexpr quint32 leastDeflatedRows = 51;
constexpr quint64 mostRawBytes = 50;

/// Reads the arrays of a group. Ends with finish(); unwinding without it is quiet.
class CArrayGroupReader
{
public:
    static constexpr bool isReading = true;

    /// \param rowBytes  that a row takes in memory with the arrays that become zeros; 0: no more than what is read
    CArrayGroupReader(CDemDataStream& stream, bool deflated, quint32 rows, quint64 rowBytes = 0);

    /// Gives an array as many rows as the group has. It grows as its bytes arrive: no more memory
    /// is taken than the stream can fill.
    /// \throws std::length_error if the rest of the stream can't hold the rows
    template <class TRow>
    void rows(const char* what, std::vector<TRow>& array)
    {
        elements(what, array, attribute->count);
    }
    /// The same for an array of several values a row.
    template <class TValue>
    void elements(const char* what, std::vector<TValue>& array, quint64 count)
    {
        static_assert(std::is_trivially_copyable_v<TValue>, "moved as bytes");
        array.clear();
        const quint64 most = admit(what, count, sizeof(TValue));
        noteRows();
        for (quint64 done = 0; done < count;) {
            const quint64 next = done == 0 ? std::min(count, most) : std::min(count, 2 * done);
            admitElements(what, next, (next - done) * sizeof(TValue));
            array.resize(static_cast<std::size_t>(next));
            move(array.data() + done, (next - done) * sizeof(TValue));
            done = next;
        }
    }
    quint32 rowCount() const { return attribute->count; }
    /// Consumes an array that isn't kept.
    void skip(const char* what, quint64 count, quint64 elementBytes);
    void finish() { attribute->finish(); }

private:
    /// Counts the memory for elements that are about to be read.
    /// \param count  of them, with those that were read before
    void admitElements(const char* what, quint64 count, quint64 bytes);
    /// Believes a count or throws. \return how many elements to take memory for at first
    quint64 admit(const char* what, quint64 count, quint64 elementBytes) const;
    /// From here on damage costs that many rows.
    void noteRows();
    void move(void* data, quint64 bytes);

    CDemDataStream* stream; // not owned
    std::unique_ptr<ReadAttribute> attribute;
    quint64 rowBytes;
    quint64 admittedRows = 0;
};

/// Writes the arrays of a group.
class CArrayGroupWriter
{
public:
    static constexpr bool isReading = false;

    CArrayGroupWriter(CDemDataStream& stream, bool deflated, quint32 rows);

    template <class TRow>
    void rows(const char* what, const std::vector<TRow>& array)
    {
        elements(what, array, attribute->count);
    }
    template <class TValue>
    void elements(const char* what, const std::vector<TValue>& array, quint64 count)
    {
        static_assert(std::is_trivially_copyable_v<TValue>, "moved as bytes");
        admit(what, count, array.size());
        move(array.data(), count * sizeof(TValue));
    }
    void finish() { attribute->finish(); }

private:
    /// An array that isn't as long as the group would put the next one in its place.
    static void admit(const char* what, quint64 count, quint64 present);
    void move(const void* data, quint64 bytes);

    std::unique_ptr<WriteAttribute> attribute;
};

} // namespace NBrenmark
