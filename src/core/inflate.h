#pragma once
// Inflating a zlib stream piece by piece.

#include <cstddef>
#include <memory>
#include <stdexcept>

namespace NBrenmark {

/// The bytes are no zlib stream. The text says in which way.
class inflate_error : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// Inflates a zlib stream whose bytes are known to be so many. \return whether they were, and the stream is sound
/// \throws std::bad_alloc
bool inflateWhole(const char* stream, std::size_t streamSize, char* target, std::size_t size);

class CInflater
{
public:
    /// \throws std::bad_alloc
    CInflater();
    ~CInflater();
    CInflater(const CInflater&) = delete;
    CInflater& operator=(const CInflater&) = delete;

    /// Begins another stream, and forgets its input.
    void restart();
    /// Whether all input has been taken.
    bool isHungry() const;
    /// The next input, to a hungry one. It stays the caller's.
    void feed(const char* data, std::size_t size);
    /// Fills the room as far as the input goes. \return the bytes made
    /// \throws inflate_error; std::bad_alloc
    std::size_t inflate(char* target, std::size_t room);
    /// Whether the end of the stream was met, and its checksum was right.
    bool hasEnded() const;
    /// Bytes of the input that weren't used, with those that were taken too early. At the end of the stream these are
    /// what follows it.
    std::size_t waiting() const;
    /// Bytes that are inflated and found no room yet.
    std::size_t ready() const;

private:
    struct SState;
    std::unique_ptr<SState> state;
};

} // namespace NBrenmark
