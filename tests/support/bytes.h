#pragma once
// Bytes put together by hand, in the encodings of the legacy family: what tests hand to a reader
// and hold against a writer. Shares no line with the streams of the library, QDataStream included.

#include <QByteArray>
#include <QString>
#include <initializer_list>
#include <string>
#include <vector>

namespace NBrenmark {

/// A run of bytes that grows at its end. Numbers go in big-endian, raw arrays little-endian.
class CBytes
{
public:
    CBytes() = default;
    explicit CBytes(QByteArray content) : content(std::move(content)) {}

    CBytes& i8(int value);
    CBytes& i32(qint32 value);
    CBytes& u32(quint32 value);
    CBytes& u64(quint64 value);
    CBytes& f64(double value);
    /// Several doubles, each as f64 does it.
    CBytes& f64s(std::initializer_list<double> values);
    /// Length in bytes, then UTF-16; a null string is a length of 0xFFFFFFFF alone.
    CBytes& text(const QString& value);
    /// ASCII characters, without a length and an end.
    CBytes& ascii(const char* characters);

    CBytes& rawF64(const std::vector<double>& values);
    CBytes& rawI32(const std::vector<qint32>& values);
    /// One zlib stream of the content, with no length in front of it.
    CBytes& deflated(const CBytes& plain);
    /// A compressed array group: the flag, then the arrays, deflated or as they are.
    CBytes& group(const CBytes& arrays, bool deflate);
    /// A tagged block: tag, size, payload, size, tag.
    CBytes& block(quint32 tag, const CBytes& payload);

    CBytes& operator+=(const CBytes& other);
    CBytes& operator+=(const QByteArray& other);
    friend CBytes operator+(CBytes a, const CBytes& b) { return a += b; }
    friend bool operator==(const CBytes& a, const CBytes& b) { return a.content == b.content; }
    friend bool operator!=(const CBytes& a, const CBytes& b) { return !(a == b); }

    qint64 size() const { return content.size(); }
    const QByteArray& bytes() const { return content; }
    /// The first bytes, as a file that was cut there has them.
    CBytes first(qint64 count) const;
    /// The bytes from a position on.
    CBytes from(qint64 position) const;
    /// The same with other bytes laid over those at a position.
    CBytes with(qint64 position, const CBytes& patch) const;
    /// \throws std::runtime_error if the file can't be written whole
    void toFile(const QString& path) const;
    static CBytes fromFile(const QString& path);

    /// Bytes that are no number, text or marker of any kind, the same at every call.
    static CBytes garbage(int count);

private:
    CBytes& bigEndian(quint64 value, int width);
    CBytes& littleEndian(quint64 value, int width);

    QByteArray content;
};

/// So that a failed comparison shows sizes and the first place that differs.
void PrintTo(const CBytes& bytes, std::ostream* out);
/// Empty if both are equal, else where they part, with the bytes round it.
std::string firstDifference(const CBytes& expected, const CBytes& found);

} // namespace NBrenmark
