// The one source that knows how the digest is made.
#include "io/text/quick_digest.h"

#define XXH_INLINE_ALL
#include <xxhash.h>

#include <new>

namespace NBrenmark {

static XXH3_state_t* hashOf(unsigned char* bytes) { return std::launder(reinterpret_cast<XXH3_state_t*>(bytes)); }
static const XXH3_state_t* hashOf(const unsigned char* bytes)
{
    return std::launder(reinterpret_cast<const XXH3_state_t*>(bytes));
}

CQuickDigest::CQuickDigest() : state()
{
    static_assert(sizeof(XXH3_state_t) <= sizeof(SState), "room for the state");
    static_assert(alignof(SState) % alignof(XXH3_state_t) == 0, "and at a place that suits it");
    XXH3_128bits_reset(new (state.bytes.data()) XXH3_state_t);
}

void CQuickDigest::add(const void* data, size_t bytes) { XXH3_128bits_update(hashOf(state.bytes.data()), data, bytes); }

std::string CQuickDigest::hex() const
{
    static const char* const digits = "0123456789abcdef";
    XXH128_canonical_t canonical;
    XXH128_canonicalFromHash(&canonical, XXH3_128bits_digest(hashOf(state.bytes.data())));
    std::string text;
    for (const unsigned char byte : canonical.digest)
        text.append(1, digits[byte / 16]).append(1, digits[byte % 16]);
    return text;
}

} // namespace NBrenmark
