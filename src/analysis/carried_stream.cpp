#include "analysis/carried_stream.h"

#include "analysis/selection_kinds.h"
#include "core/stop_flag.h"
#include "core/versioned_stream.h"

#include <QDataStream>
#include <QIODevice>

#include <algorithm>
#include <stdexcept>
#include <vector>

namespace NBrenmark {

/// Longer names aren't looked for: what is only similar to a selection must not cost the time of one.
static constexpr quint32 mostNameBytes = 4096;

/// Two records of display options, and two lists of nothing: no selection has less behind its name.
static constexpr qint64 leastBytes = 4 * 4;

/// A text as the stream holds it.
static QByteArray streamed(const QString& text)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << text;
    return bytes;
}

/// A short text at the device's position.
static bool takeName(QDataStream& stream, QString& name)
{
    quint32 length = 0;
    stream >> length;
    if (stream.status() != QDataStream::Ok || length > mostNameBytes || length % 2 != 0)
        return false;
    stream.device()->seek(stream.device()->pos() - 4);
    stream >> name;
    return stream.status() == QDataStream::Ok;
}

/// Whether behind the word of a class stand a name, the same name again and a flag, as at each selection's start.
static bool isSelectionHead(QIODevice& device, qint64 behindWord)
{
    device.seek(behindWord);
    QDataStream stream(&device);
    QString name, again;
    qint8 active = -1;
    if (!takeName(stream, name) || !takeName(stream, again))
        return false;
    stream >> active;
    return name == again && (active == 0 || active == 1) && stream.status() == QDataStream::Ok;
}

/// Where the next selection starts, from the device's position on; end if there is none before.
static qint64 nextSelection(QIODevice& device, qint64 end)
{
    std::vector<QByteArray> words;
    int longest = 0;
    for (const QString& typeId : NSelection::selectionTypeIds()) {
        words.push_back(streamed(typeId));
        longest = std::max(longest, words.back().size());
    }
    constexpr qint64 chunkBytes = 1 << 18;
    const qint64 begin = device.pos();
    for (qint64 chunkAt = begin; chunkAt < end; chunkAt += chunkBytes) {
        leaveIfStopped();
        device.seek(chunkAt);
        const QByteArray chunk = device.read(std::min<qint64>(chunkBytes + longest, end - chunkAt));
        std::vector<std::pair<qint64, int>> met; // place and length of a word
        for (const QByteArray& word : words)
            for (int at = chunk.indexOf(word); at >= 0 && at < chunkBytes; at = chunk.indexOf(word, at + 1))
                met.emplace_back(chunkAt + at, word.size());
        std::sort(met.begin(), met.end());
        for (const auto& [at, length] : met)
            if (isSelectionHead(device, at + length))
                return at;
    }
    return end;
}

void SCarriedStream::read(QDataStream& stream)
{
    QIODevice& device = *stream.device();
    const qint64 begin = device.pos();
    quint32 word = 0;
    stream >> word;
    isUnwrapped = word != recordWord;
    qint64 length = 0;
    if (isUnwrapped) {
        version = fileVersionOf(stream);
        edition = editionOf(stream);
        const qint64 end = blockEndOf(stream);
        if (end < begin)
            throw std::runtime_error("a selection of an unknown layout, in a block whose end can't be found");
        device.seek(begin);
        length = nextSelection(device, end) - begin;
        if (length < leastBytes)
            throw std::runtime_error("a selection ends early");
        device.seek(begin);
        stream.resetStatus();
    }
    else {
        qint32 stored = 0;
        stream >> version >> edition >> stored;
        length = stored;
    }
    if (stream.status() != QDataStream::Ok || length < 0 || length > bytesLeftOf(stream))
        throw std::length_error("the bytes of a selection end early");
    bytes.resize(static_cast<int>(length));
    if (stream.readRawData(bytes.data(), bytes.size()) != bytes.size())
        throw std::runtime_error("the bytes of a selection end early");
}

void SCarriedStream::write(QDataStream& stream) const
{
    const bool isAtHome = isUnwrapped && version == currentFileVersion() && edition == 0;
    if (!isAtHome)
        stream << recordWord << version << edition << qint32(bytes.size());
    stream.writeRawData(bytes.constData(), bytes.size());
}

} // namespace NBrenmark
