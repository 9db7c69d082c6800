#include "brenmark/export/vtk_file.h"

#include "brenmark/plot_axis.h"
#include "brenmark/target_file.h"

#include <QtEndian>

#include <algorithm>

namespace NBrenmark {

/// Bytes that are deflated at a time. The encoder looks at a part of each first, so that small blocks cost more.
static constexpr std::size_t blockBytes = 1u << 20;

/// Of the head, for the attribute that says where an array begins: with spaces after it, since that is known last.
static constexpr std::size_t offsetWidth = sizeof " offset=\"18446744073709551615\"" - 1;

static std::string number(quint64 value) { return std::string(reinterpret_cast<const char*>(&value), sizeof value); }

std::shared_ptr<const SBytes> CDeflatedSequences::block(qint64 first, qint64 step, std::size_t count)
{
    {
        const std::lock_guard<std::mutex> guard(lock);
        const SKept& kept = blocks[{first, step}];
        if (kept.count == count)
            return kept.stream;
    }
    std::vector<qint64> numbers(count);
    for (std::size_t i = 0; i < count; ++i)
        numbers[i] = first + qint64(i) * step;
    auto stream = std::make_shared<const SBytes>(
        quicklyDeflated(reinterpret_cast<const char*>(numbers.data()), count * sizeof numbers[0]));
    const std::lock_guard<std::mutex> guard(lock);
    blocks[{first, step}] = {count, stream};
    return stream;
}

CVtkFile::CVtkFile(const QString& path, const std::string& kind, CDeflatedSequences& sequences)
    : path(path),
      kind(kind),
      knownSequences(sequences),
      text("<?xml version=\"1.0\"?>\n<VTKFile type=\"" + kind + "\" version=\"1.0\" byte_order=\"" +
           (Q_BYTE_ORDER == Q_LITTLE_ENDIAN ? "LittleEndian" : "BigEndian") +
           "\" header_type=\"UInt64\" compressor=\"vtkZLibDataCompressor\">\n<" + kind + ">\n")
{}

CVtkFile& CVtkFile::operator<<(const std::string& more)
{
    text += more;
    return *this;
}

void CVtkFile::begin(const char* type, const std::string& name, std::size_t columns, std::size_t bytes)
{
    SArray& array = arrays.emplace_back();
    array.bytes = bytes;
    text.append("<DataArray type=\"").append(type).append("\" Name=\"").append(svgText(name));
    text.append("\" NumberOfComponents=\"").append(std::to_string(columns));
    text.append("\" format=\"appended\"");
    array.offsetPlace = text.size();
    text.append(offsetWidth, ' ').append("/>\n");
}

void CVtkFile::addBlocks(const std::function<std::shared_ptr<const SBytes>(std::size_t, std::size_t)>& deflate)
{
    SArray& array = arrays.back();
    for (std::size_t at = 0; at < array.bytes; at += blockBytes) {
        SBlock& block = array.blocks.emplace_back();
        const std::size_t size = std::min(blockBytes, array.bytes - at);
        block.task.emplace([&block, deflate, at, size] { block.stream = deflate(at, size); });
    }
}

void CVtkFile::sequence(const std::string& name, qint64 first, qint64 step, std::size_t count)
{
    begin("Int64", name, 1, count * sizeof first);
    addBlocks([this, first, step](std::size_t at, std::size_t size) {
        return knownSequences.block(first + qint64(at / sizeof first) * step, step, size / sizeof first);
    });
}

void CVtkFile::write()
{
    CTargetFile file(path);
    text += "</" + kind + ">\n<AppendedData encoding=\"raw\">\n_";
    file.write(text);
    const std::size_t begin = file.position();
    for (SArray& array : arrays) {
        // Before the blocks their number, the size of all but the last, that of the last if it is another, and the size
        // of each when it is deflated, which is known once it is written.
        const std::size_t place = file.position();
        const std::string offset = " offset=\"" + std::to_string(place - begin) + '"';
        text.replace(array.offsetPlace, offset.size(), offset);
        std::string sizes = number(array.blocks.size()) + number(blockBytes) + number(array.bytes % blockBytes);
        file.write(std::string(sizes.size() + array.blocks.size() * sizeof(quint64), '\0'));
        for (SBlock& block : array.blocks) {
            // Another thread may just be at it: meanwhile there are others.
            while (!block.task->runHere() && !block.task->isDone() && CThreadPool::help()) {
            }
            block.task->wait();
            file.write(block.stream->data.get(), block.stream->size);
            sizes += number(block.stream->size);
            block.stream.reset();
        }
        const std::size_t end = file.position();
        file.seek(place);
        file.write(sizes);
        file.seek(end);
    }
    file.write("\n</AppendedData>\n</VTKFile>\n");
    file.seek(0);
    file.write(text);
    file.commit();
}

} // namespace NBrenmark
