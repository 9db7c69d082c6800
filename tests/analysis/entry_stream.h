#pragma once
// The entries of a settings file, read from bytes and written to bytes.

#include "core/version.h"
#include "core/versioned_stream.h"
#include "support/bytes.h"

#include <QBuffer>
#include <gtest/gtest.h>

namespace NBrenmark {

constexpr quint32 current = makeVersion(30, 0, 20);

/// A stream over bytes, of a version.
struct SSource
{
    explicit SSource(const CBytes& bytes, quint32 version = current) : content(bytes.bytes())
    {
        buffer.setBuffer(&content);
        buffer.open(QIODevice::ReadOnly);
        stream.setFileVersion(version);
    }
    QByteArray content;
    QBuffer buffer;
    CVersionedStream stream{&buffer};
};

template <class TEntry>
CBytes written(TEntry& entry)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    CVersionedStream stream(&buffer);
    EXPECT_TRUE(entry.write(stream, nullptr));
    return CBytes(bytes);
}

} // namespace NBrenmark
