#pragma once
// A file of VTK's XML formats: a head that says what is where, then arrays in compressed blocks of bytes.
// The format: "VTK XML Formats" in the VTK documentation, header_type UInt64, encoding raw, vtkZLibDataCompressor.

#include "brenmark/target_file.h"

#include "core/deflate.h"
#include "core/thread_pool.h"

#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace NBrenmark {

/// Its head in the order of the file, with the arrays where the head names them. The pool deflates them while more are
/// added.
class CVtkFile
{
public:
    /// \param kind  "PolyData" or "UnstructuredGrid"
    explicit CVtkFile(const std::string& kind);

    CVtkFile& operator<<(const std::string& text);
    /// \param values  must remain as long as this does; rows x columns
    template <class T>
    void array(const std::string& name, std::size_t columns, const std::vector<T>& values)
    {
        begin(typeWord(values), name, columns, values.data(), values.size() * sizeof(T));
    }
    /// The same for values that no one else keeps.
    template <class T>
    void array(const std::string& name, std::size_t columns, std::vector<T>&& values)
    {
        const auto shared = std::make_shared<const std::vector<T>>(std::move(values));
        kept.push_back(shared);
        array(name, columns, *shared);
    }
    /// Once, at the end, by any thread. \throws CFailure  it can't be written
    void writeTo(CTargetFile& file);

private:
    struct SBlock
    {
        SBytes stream;                   ///< when the task is done
        std::optional<CPooledTask> task; // the last member: it uses the other, and goes first
    };
    struct SArray
    {
        std::size_t bytes = 0;
        std::string before; ///< text of the head up to the array's place
        std::deque<SBlock> blocks;
    };

    static const char* typeWord(const std::vector<double>&) { return "Float64"; }
    static const char* typeWord(const std::vector<qint64>&) { return "Int64"; }
    static const char* typeWord(const std::vector<qint32>&) { return "Int32"; }
    static const char* typeWord(const std::vector<uchar>&) { return "UInt8"; }
    void begin(const char* type, const std::string& name, std::size_t columns, const void* values, std::size_t bytes);

    std::string kind;
    std::string text;                              ///< of the head after the last array
    std::vector<std::shared_ptr<const void>> kept; // before the tasks, which use them
    std::deque<SArray> arrays;
};

} // namespace NBrenmark
