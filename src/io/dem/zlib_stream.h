#pragma once
// The compressors of array groups: one zlib stream, with zlib's own header and trailer, through
// which the arrays of a group pass one after the other.

#include <QtGlobal>
#include <memory>

namespace NBrenmark {

class CDemDataStream;

class zipio
{
public:
    virtual void transfer(void* buffer, quint32 length) = 0;
    /// Ends the zlib stream. Not done by the destructor: a full disk shows here.
    virtual void finish() = 0;
    virtual ~zipio() = default;
    /// The most bytes that a reader can still give, as far as the rest of the stream can carry them.
    virtual qint64 mostBytes() const = 0;
};

/// \param writing  a zlib_writer, else a zlib_reader, or what gives the bytes that were inflated ahead of it
std::unique_ptr<zipio> makeZip(CDemDataStream& stream, bool writing);

/// zlib's level for all writers of the process; -1, zlib's own choice, unless changed.
int& compressionLevel();

/// Deflate makes 1032 bytes out of one at most.
constexpr qint64 mostInflation = 1032;

} // namespace NBrenmark
