#pragma once
// A deck as lines of text: the grammar, and what the forms write through.
//
//   line     PATH VALUE                       one blank between them; a path holds none
//   path     segments joined by slashes       creator/materials/steel/density
//   value    true, false, a whole number, a real number with 17 significant digits, a text in double
//            quotes, a tuple in round brackets
//   array    KIND[ROWS] or KIND[ROWS,COLUMNS], KIND being f64, i32, u32 or u8; then the values themselves
//            if there are few, else sha256: and the digest of the values as little-endian bytes, row
//            by row. With full arrays each row follows as a line of its own under its number.
//
// Segments that are names are escaped (text_values.h). The second entry of a name in a list has #2
// after it, and so on. What belongs to the storing rather than to the model is under stored/.

#include "io/text/text_values.h"
#include "model/particle_type.h"

#include <array>
#include <map>
#include <string>
#include <type_traits>
#include <vector>

class QIODevice;

namespace NBrenmark {

/// The values of an array as they lie in memory, row by row.
struct SArrayView
{
    const char* kind; ///< "f64", "i32", "u32"
    const void* data;
    size_t rows;
    size_t columns;

    size_t elementBytes() const { return kind[0] == 'f' ? 8 : 4; }
    size_t bytes() const { return rows * columns * elementBytes(); }
    /// A row as a line shows it: its value, or a tuple.
    std::string row(size_t number) const;
};

/// Takes a deck's text line by line, so that all of it never has to be held.
class ITextSink
{
public:
    virtual ~ITextSink() = default;
    virtual void line(const std::string& path, const std::string& value) = 0;
    /// A line of a real number, or of a tuple of them.
    virtual void real(const std::string& path, const std::string& value) { line(path, value); }
    /// The line of an array. \param values  gone when this returns
    virtual void array(const std::string& path, const std::string& value, const SArrayView& values)
    {
        static_cast<void>(values);
        line(path, value);
    }
    /// Whether the digest of an array is a quick one (quick_digest.h), of the same bytes: for lines that are only held
    /// against others of this kind, and that no one is shown.
    virtual bool wantsQuickDigests() const { return false; }
};

/// What an element of an array is made of: the kind's name, its bytes, how many of them.
template <class T>
struct SArrayElement;
template <>
struct SArrayElement<double>
{
    static constexpr const char* kind = "f64";
    static constexpr size_t bytes = 8, columns = 1;
};
template <>
struct SArrayElement<qint32>
{
    static constexpr const char* kind = "i32";
    static constexpr size_t bytes = 4, columns = 1;
};
template <>
struct SArrayElement<quint32>
{
    static constexpr const char* kind = "u32";
    static constexpr size_t bytes = 4, columns = 1;
};
template <class T, size_t N>
struct SArrayElement<std::array<T, N>> : SArrayElement<T>
{
    static constexpr size_t columns = N;
};
template <>
struct SArrayElement<C3DVector> : SArrayElement<std::array<double, 3>>
{
};
template <>
struct SArrayElement<C3DPoint> : SArrayElement<std::array<double, 3>>
{
};
template <>
struct SArrayElement<CQuaternion> : SArrayElement<std::array<double, 4>>
{
};

class CTextOutput
{
public:
    /// \param sink  not owned
    /// \param root  what all paths begin with; may be empty
    CTextOutput(ITextSink& sink, const std::string& root, bool fullArrays)
        : sink(sink), path(root), fullArrays(fullArrays)
    {}

    /// Runs body with the segment at the end of the path.
    template <class TBody>
    void group(const std::string& segment, TBody&& body)
    {
        const size_t length = path.size();
        path = joined(path, segment);
        body();
        path.resize(length);
    }

    /// One line. Names are those of the model's fields.
    template <class T>
    void value(const char* name, const T& value)
    {
        put(joined(path, name), value);
    }
    /// The same for the path itself.
    template <class T>
    void here(const T& value)
    {
        put(path, value);
    }
    /// A line of what belongs to the storing.
    template <class T>
    void stored(const char* name, const T& value)
    {
        sink.line(joined(joined("stored", path), name), NText::text(value));
    }

    template <class T>
    void array(const char* name, const std::vector<T>& elements)
    {
        using Element = SArrayElement<T>;
        static_assert(sizeof(T) == Element::bytes * Element::columns, "rows without gaps");
        rows(joined(path, name), {Element::kind, elements.data(), elements.size(), Element::columns});
    }
    /// An array of real numbers whose width the model knows, under the path itself.
    void arrayHere(const std::vector<double>& values, size_t rowCount, size_t columns)
    {
        rows(path, {"f64", values.data(), rowCount, columns});
    }

    /// The bytes of a file as an array of the kind u8, from where the device is.
    void bytes(const char* name, QIODevice& device);

    // For a writer of its own below the present path.
    ITextSink& target() const { return sink; }
    const std::string& where() const { return path; }
    bool hasFullArrays() const { return fullArrays; }

private:
    template <class T>
    void put(const std::string& where, const T& value)
    {
        constexpr bool isText = std::is_convertible_v<T, std::string> || std::is_same_v<T, QString>;
        if constexpr (std::is_integral_v<T> || std::is_enum_v<T> || isText)
            sink.line(where, NText::text(value));
        else
            sink.real(where, NText::text(value));
    }
    static std::string joined(const std::string& path, const std::string& segment)
    {
        return path.empty() ? segment : path + '/' + segment;
    }
    void rows(const std::string& where, const SArrayView& array);

    ITextSink& sink;
    std::string path;
    bool fullArrays;
};

/// The segments of a list whose entries may share a name.
class CListSegments
{
public:
    template <class TName>
    std::string next(const TName& name)
    {
        const std::string plain = NText::segment(name);
        const int number = ++met[plain];
        return number == 1 ? plain : plain + '#' + std::to_string(number);
    }

private:
    std::map<std::string, int> met;
};

} // namespace NBrenmark
