#pragma once
// XXH3 with 128 bits, fed piece by piece: the same for the same bytes on any machine. It finds what time and copying do
// to data; against who means harm it is no protection.

#include <array>
#include <cstddef>
#include <string>

namespace NBrenmark {

class CQuickDigest
{
public:
    CQuickDigest();

    void add(const void* data, size_t bytes);
    /// A text with the zero that ends it.
    void add(const std::string& text) { add(text.c_str(), text.size() + 1); }
    /// Of all so far, 32 hexadecimal digits in the order that the algorithm calls canonical.
    std::string hex() const;

private:
    // The state of the algorithm, in place: digests are made by the hundred thousand between what stays.
    struct alignas(64) SState
    {
        std::array<unsigned char, 576> bytes;
    };
    SState state;
};

} // namespace NBrenmark
