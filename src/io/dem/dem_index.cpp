// The entries of the index grew twice: offsets of 64 bits at 20.0.22, the flag of a full save at 22.0.0.
#include "io/dem/dem_index.h"

#include "core/version_history.h"
#include "io/dem/dem_data_stream.h"

namespace NBrenmark::NDemIndex {

qint64 entryBytes(quint32 lastVersion)
{
    return 8 + 4 + (lastVersion >= NFileVersion::longOffsets ? 8 : 4) + (lastVersion >= NFileVersion::masks ? 4 : 0);
}

bool isCurrentForm(quint32 lastVersion) { return lastVersion >= NFileVersion::masks; }

static STimestepIndexEntry readEntry(CDemDataStream& stream, quint32 lastVersion)
{
    STimestepIndexEntry entry;
    stream >> entry.time >> entry.segment; // s; 0: name.dem itself
    if (lastVersion >= NFileVersion::longOffsets)
        stream >> entry.offset;
    else {
        quint32 shortOffset = 0; // enough, for a segment is closed at 1.5 GiB
        stream >> shortOffset;
        entry.offset = shortOffset;
    }
    entry.isFull = true; // before masks came, each timestep is
    if (lastVersion >= NFileVersion::masks) {
        quint32 isFull = 0;
        stream >> isFull;
        entry.isFull = isFull != 0;
    }
    return entry;
}

static void writeEntry(CDemDataStream& stream, const STimestepIndexEntry& entry)
{
    stream << entry.time << entry.segment << entry.offset << quint32(entry.isFull);
}

bool read(QIODevice& device, quint32 lastVersion, quint32 timesteps, TimestepIndex& index)
{
    index.clear();
    CDemDataStream stream(&device);
    quint32 count = 0;
    stream >> count;
    if (stream.status() != QDataStream::Ok || count != timesteps ||
        stream.bytesLeft() / entryBytes(lastVersion) < count)
        return false;
    index.reserve(count);
    for (quint32 i = 0; i < count; ++i)
        index.push_back(readEntry(stream, lastVersion));
    return stream.status() == QDataStream::Ok;
}

bool write(QIODevice& device, const TimestepIndex& index)
{
    CDemDataStream stream(&device);
    stream << static_cast<quint32>(index.size());
    for (const STimestepIndexEntry& entry : index)
        if (entry.segment != 0 || entry.offset != 0) // at the very first byte is a header: such an entry has no block
            writeEntry(stream, entry);
    return stream.status() == QDataStream::Ok;
}

bool append(QIODevice& device, quint32 count, const STimestepIndexEntry& entry)
{
    CDemDataStream stream(&device);
    if (!device.seek(0))
        return false;
    stream << count; // the new one included
    if (!device.seek(device.size()))
        return false;
    writeEntry(stream, entry);
    return stream.status() == QDataStream::Ok;
}

} // namespace NBrenmark::NDemIndex
