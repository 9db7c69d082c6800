// The one source that knows how the digest is made.
#include "io/text/quick_digest.h"

#define XXH_INLINE_ALL
#include <xxhash.h>

namespace NBrenmark {

struct alignas(64) CQuickDigest::SState
{
    XXH3_state_t hash;
};

CQuickDigest::CQuickDigest() : state(std::make_unique<SState>()) { XXH3_128bits_reset(&state->hash); }
CQuickDigest::~CQuickDigest() = default;
CQuickDigest::CQuickDigest(CQuickDigest&&) noexcept = default;
CQuickDigest& CQuickDigest::operator=(CQuickDigest&&) noexcept = default;

void CQuickDigest::add(const void* data, size_t bytes) { XXH3_128bits_update(&state->hash, data, bytes); }

std::string CQuickDigest::hex() const
{
    static const char* const digits = "0123456789abcdef";
    XXH128_canonical_t canonical;
    XXH128_canonicalFromHash(&canonical, XXH3_128bits_digest(&state->hash));
    std::string text;
    for (const unsigned char byte : canonical.digest)
        text.append(1, digits[byte / 16]).append(1, digits[byte % 16]);
    return text;
}

} // namespace NBrenmark
