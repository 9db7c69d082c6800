#include "brenmark/export/vtk_file.h"

#include "brenmark/plot_axis.h"

#include <QtEndian>

#include <algorithm>

namespace NBrenmark {

/// Bytes that are deflated at a time. The encoder looks at a part of each first, so that small blocks cost more.
static constexpr std::size_t blockBytes = 1u << 20;

static std::string number(quint64 value) { return std::string(reinterpret_cast<const char*>(&value), sizeof value); }

CVtkFile::CVtkFile(const std::string& kind)
    : kind(kind),
      text("<?xml version=\"1.0\"?>\n<VTKFile type=\"" + kind + "\" version=\"1.0\" byte_order=\"" +
           (Q_BYTE_ORDER == Q_LITTLE_ENDIAN ? "LittleEndian" : "BigEndian") +
           "\" header_type=\"UInt64\" compressor=\"vtkZLibDataCompressor\">\n<" + kind + ">\n")
{}

CVtkFile& CVtkFile::operator<<(const std::string& more)
{
    text += more;
    return *this;
}

void CVtkFile::begin(const char* type, const std::string& name, std::size_t columns, const void* values,
                     std::size_t bytes)
{
    SArray& array = arrays.emplace_back();
    array.bytes = bytes;
    array.before = std::move(text);
    array.before.append("<DataArray type=\"").append(type).append("\" Name=\"").append(svgText(name));
    array.before.append("\" NumberOfComponents=\"").append(std::to_string(columns));
    array.before.append("\" format=\"appended\" offset=\"");
    text = "\"/>\n";
    for (std::size_t at = 0; at < bytes; at += blockBytes) {
        SBlock& block = array.blocks.emplace_back();
        const char* const from = static_cast<const char*>(values) + at;
        const std::size_t size = std::min(blockBytes, bytes - at);
        block.task.emplace([&block, from, size] { block.stream = quicklyDeflated(from, size); });
    }
}

void CVtkFile::writeTo(CTargetFile& file)
{
    // Each array begins with the number of its blocks, the size of all but the last, that of the last if it is another,
    // and the size of each when it is deflated.
    std::vector<std::string> sizes;
    std::size_t place = 0;
    for (SArray& array : arrays) {
        file.write(array.before + std::to_string(place));
        std::string& words = sizes.emplace_back(number(array.blocks.size()));
        words += number(blockBytes) + number(array.bytes % blockBytes);
        for (SBlock& block : array.blocks) {
            // Another thread may just be at it: meanwhile there are others.
            while (!block.task->runHere() && !block.task->isDone() && CThreadPool::help()) {
            }
            block.task->wait();
            words += number(block.stream.size);
            place += block.stream.size;
        }
        place += words.size();
    }
    file.write(text + "</" + kind + ">\n<AppendedData encoding=\"raw\">\n_");
    for (std::size_t i = 0; i < arrays.size(); ++i) {
        file.write(sizes[i]);
        for (const SBlock& block : arrays[i].blocks)
            file.write(block.stream.data.get(), block.stream.size);
    }
    file.write("\n</AppendedData>\n</VTKFile>\n");
}

} // namespace NBrenmark
