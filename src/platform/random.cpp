// A generator of our own: the same seed gives the same numbers on every host.
#include "platform/random.h"

#include <atomic>
#include <cstdint>

namespace NBrenmark {

// The linear congruential generator that ISO C (7.22.2.2) gives as an example of rand, which is
// not what the C libraries have: 32 bits of state, of which bits 16 to 30 are given out. The same
// seed gives the same numbers on every host. Force laws draw from several threads, hence atomic.
static constexpr std::uint32_t multiplier = 1103515245u;
static constexpr std::uint32_t increment = 12345u;
static std::atomic<std::uint32_t> state{1u};

void seedRandom(unsigned int seed) { state.store(seed); }

int randomNumber()
{
    std::uint32_t current = state.load();
    std::uint32_t next = 0;
    do
        next = current * multiplier + increment;
    while (!state.compare_exchange_weak(current, next));
    return static_cast<int>(next >> 16) & greatestRandomNumber;
}

double uniform() { return randomNumber() * 3.051850947599719e-05; }

} // namespace NBrenmark
