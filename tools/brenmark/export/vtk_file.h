#pragma once
// A file of VTK's XML formats: a head that says what is where, then arrays in compressed blocks of bytes.
// The format: "VTK XML Formats" in the VTK documentation, header_type UInt64, encoding raw, vtkZLibDataCompressor.

#include "core/deflate.h"
#include "core/thread_pool.h"

#include <QString>

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace NBrenmark {

/// Deflated blocks of numbers at even steps. Every file has some, for points that are cells of their own and for where
/// each cell ends, and all but the last block are the same from file to file. Threads share it.
class CDeflatedSequences
{
public:
    /// first, first + step, first + 2 step, ...
    std::shared_ptr<const SBytes> block(qint64 first, qint64 step, std::size_t count);

private:
    struct SKept
    {
        std::size_t count = 0;
        std::shared_ptr<const SBytes> stream;
    };
    std::mutex lock;
    std::map<std::pair<qint64, qint64>, SKept> blocks; ///< by first number and step
};

/// Its head in the order of the file, with the arrays where the head names them. The pool deflates them while more are
/// added.
class CVtkFile
{
public:
    /// \param kind       "PolyData" or "UnstructuredGrid"
    /// \param sequences  must remain as long as this does
    CVtkFile(const QString& path, const std::string& kind, CDeflatedSequences& sequences);

    CVtkFile& operator<<(const std::string& text);
    /// \param values  must remain as long as this does; rows x columns
    template <class T>
    void array(const std::string& name, std::size_t columns, const std::vector<T>& values)
    {
        begin(typeWord(values), name, columns, values.size() * sizeof(T));
        const char* const bytes = reinterpret_cast<const char*>(values.data());
        addBlocks([bytes](std::size_t at, std::size_t size) {
            return std::make_shared<const SBytes>(quicklyDeflated(bytes + at, size));
        });
    }
    /// The same for values that no one else keeps.
    template <class T>
    void array(const std::string& name, std::size_t columns, std::vector<T>&& values)
    {
        const auto shared = std::make_shared<const std::vector<T>>(std::move(values));
        kept.push_back(shared);
        array(name, columns, *shared);
    }
    /// Integers: first, first + step, first + 2 step, ...
    void sequence(const std::string& name, qint64 first, qint64 step, std::size_t count);
    /// Once, at the end, by any thread. \throws CFailure  it can't be written
    void write();

private:
    struct SBlock
    {
        std::shared_ptr<const SBytes> stream; ///< when the task is done
        std::optional<CPooledTask> task;      // the last member: it uses the other, and goes first
    };
    struct SArray
    {
        std::size_t bytes = 0;
        std::size_t offsetPlace = 0; ///< in the head
        std::deque<SBlock> blocks;
    };

    static const char* typeWord(const std::vector<double>&) { return "Float64"; }
    static const char* typeWord(const std::vector<qint64>&) { return "Int64"; }
    static const char* typeWord(const std::vector<qint32>&) { return "Int32"; }
    static const char* typeWord(const std::vector<uchar>&) { return "UInt8"; }
    void begin(const char* type, const std::string& name, std::size_t columns, std::size_t bytes);
    /// \param deflate  makes the stream of a part of the array: its first byte, and how many there are
    void addBlocks(const std::function<std::shared_ptr<const SBytes>(std::size_t, std::size_t)>& deflate);

    QString path;
    std::string kind;
    CDeflatedSequences& knownSequences;
    std::string text;                              ///< the head
    std::vector<std::shared_ptr<const void>> kept; // before the tasks, which use them
    std::deque<SArray> arrays;
};

} // namespace NBrenmark
