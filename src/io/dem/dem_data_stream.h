#pragma once
// The stream of the legacy family: scalars in the encoding of CVersionedStream, with the options of
// the read or write beside them, and an eye on what a count may still ask for.

#include "core/counted.h"
#include "core/save_options.h"
#include "core/versioned_stream.h"

#include <string>

namespace NBrenmark {

class CInflateAhead;

class CDemDataStream : public CVersionedStream
{
public:
    /// \param device   not owned
    /// \param options  copied
    explicit CDemDataStream(QIODevice* device, const SSaveOptions& options = SSaveOptions());

    SSaveOptions options;
    CInflateAhead* ahead = nullptr; ///< what was inflated of the block before its read began; not owned
    quint64 rowsAtWork = 0;         ///< of the arrays that are being read: what is lost if they are damaged

    qint64 position() const { return device()->pos(); }
    /// \throws std::length_error unless so many bytes follow. Nothing was taken for them before.
    /// \param what  what the bytes hold: "12 materials"
    void require(qint64 bytes, const std::string& what) const;
    /// \throws std::runtime_error if a value was read past the end or couldn't be written: zeros are
    ///         never taken for data; device_error if the device itself couldn't be read
    void checkStatus(const char* what) const;
};

} // namespace NBrenmark
