#pragma once
// XXH3 with 128 bits, fed piece by piece: the same for the same bytes on any machine. It finds what time and copying do
// to data; against who means harm it is no protection.

#include <cstddef>
#include <memory>
#include <string>

namespace NBrenmark {

class CQuickDigest
{
public:
    CQuickDigest();
    ~CQuickDigest();
    CQuickDigest(CQuickDigest&&) noexcept;
    CQuickDigest& operator=(CQuickDigest&&) noexcept;

    void add(const void* data, size_t bytes);
    /// A text with the zero that ends it.
    void add(const std::string& text) { add(text.c_str(), text.size() + 1); }
    /// Of all so far, 32 hexadecimal digits in the order that the algorithm calls canonical.
    std::string hex() const;

private:
    struct SState;
    std::unique_ptr<SState> state;
};

} // namespace NBrenmark
