#pragma once
// Blocks and markers of the legacy stream: a block carries its own length and tag at both ends, so
// that a reader can check it and skip it.

#include <QtGlobal>
#include <exception>
#include <string>

namespace NBrenmark {

class CDemDataStream;

enum EBlockTag : quint32
{
    eCollisionsBlock = 1,
    eContactRecordsBlock = 2,
    eContactsBlock = 3,
    eBondsBlock = 4
};

constexpr quint32 timestepMarker = 0xBEEFCAFEu;
constexpr quint32 particleTypesMarker = 8138;
constexpr quint32 particleTypeMarker = 3141;

/// What doesn't frame as it should.
class block_error : public std::exception
{
public:
    /// "Invalid marker found in data stream loading expected tag=3 at pos=1044."
    block_error(const char* message, const CDemDataStream& stream, quint32 tag, bool saving);
    const char* what() const noexcept override { return text.c_str(); }

private:
    std::string text;
};

/// u32 tag, u32 size, payload, u32 size, u32 tag.
class CDemBlock
{
public:
    /// Opens the block. \throws block_error for another tag, std::length_error for a size that the
    /// rest of the stream can't hold
    CDemBlock(CDemDataStream& stream, quint32 tag, bool saving);
    ~CDemBlock();
    CDemBlock(const CDemBlock&) = delete;
    CDemBlock& operator=(const CDemBlock&) = delete;

    /// Writes the trailer and the size in front, or checks the trailer.
    void close();
    /// Goes to the trailer, whatever was read so far. Saving can't skip.
    void skip();

private:
    CDemDataStream* stream; // not owned
    quint64 start = 0;      // reading: of the payload; writing: of the size in front of it
    quint32 size = 0;
    quint32 tag;
    bool saving;
    qint64 outerLimit = -1; // of the stream, before this block
};

/// Reads a u32. \throws block_error if it isn't the expected one
void checkMarker(CDemDataStream& stream, quint32 expected);

} // namespace NBrenmark
