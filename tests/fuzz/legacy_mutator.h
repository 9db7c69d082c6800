#pragma once
// Changes bytes of a legacy stream so that the lengths which enclose the change still hold: what is within a block or a
// text is reached, where bytes changed at random would end at the next trailer. Changes file versions as well, so that one
// seed runs through the gates of all of them. A fuzzer includes this in its one source.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <random>
#include <vector>

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t maxSize);

namespace NBrenmark {

/// Bytes that are counted in front of them and, in a block, once more after them. A text isn't, and has no tag.
struct SCountedBytes
{
    std::size_t start = 0; ///< of the content
    std::size_t size = 0;
    bool isBlock = false;
};

class CLegacyMutation
{
public:
    CLegacyMutation(const std::uint8_t* data, std::size_t size, unsigned int seed)
        : bytes(data, data + size), seed(seed)
    {
        find();
    }

    /// \return the bytes, no more than maxSize of them
    const std::vector<std::uint8_t>& mutated(std::size_t maxSize)
    {
        const unsigned int choice = seed() % 8;
        if (choice == 0)
            changeVersion();
        else if (choice < 3 || counted.empty())
            changeAnywhere(maxSize);
        else
            changeWithin(counted[seed() % counted.size()], maxSize);
        return bytes;
    }

private:
    std::uint32_t word(std::size_t at) const
    {
        return std::uint32_t(bytes[at]) << 24 | std::uint32_t(bytes[at + 1]) << 16 | std::uint32_t(bytes[at + 2]) << 8 |
               bytes[at + 3];
    }
    void setWord(std::size_t at, std::uint32_t value)
    {
        for (int i = 0; i < 4; ++i)
            bytes[at + i] = std::uint8_t(value >> (24 - 8 * i));
    }

    /// Blocks of the tags that there are, and texts of characters as names have them.
    void find()
    {
        for (std::size_t at = 0; at + 4 <= bytes.size(); ++at) {
            const std::uint32_t first = word(at);
            const std::size_t rest = bytes.size() - at - 4;
            if (first >= 1 && first <= 4 && rest >= 12) {
                const std::uint32_t size = word(at + 4);
                if (size <= rest - 12 && word(at + 8 + size) == size && word(at + 12 + size) == first)
                    counted.push_back({at + 8, size, true});
            }
            if (first >= 2 && first <= 200 && first % 2 == 0 && first <= rest && bytes[at + 4] == 0 &&
                bytes[at + 5] >= ' ')
                counted.push_back({at + 4, first, false});
        }
    }

    void changeVersion()
    {
        static constexpr std::uint32_t lines[] = {0x0204, 0x0d00, 0x1400, 0x1500, 0x1600, 0x1601, 0x1700,
                                                  0x1701, 0x1800, 0x1900, 0x1a00, 0x1b00, 0x1e00, 0x0300};
        if (bytes.size() < 4)
            return;
        const std::uint32_t old = word(0);
        const std::uint32_t version = lines[seed() % std::size(lines)] << 8 | seed() % 61;
        for (std::size_t at = 0; at + 4 <= bytes.size(); ++at)
            if (word(at) == old)
                setWord(at, version); // of the model, and of the timestep after it
    }

    void changeAnywhere(std::size_t maxSize)
    {
        const std::size_t size = bytes.size();
        bytes.resize(maxSize);
        bytes.resize(LLVMFuzzerMutate(bytes.data(), size, maxSize));
    }

    void changeWithin(const SCountedBytes& target, std::size_t maxSize)
    {
        const std::size_t room = maxSize - std::min(maxSize, bytes.size());
        const auto start = bytes.begin() + std::ptrdiff_t(target.start);
        std::vector<std::uint8_t> content(start, start + std::ptrdiff_t(target.size));
        content.resize(target.size + std::min<std::size_t>(room, 64));
        content.resize(LLVMFuzzerMutate(content.data(), target.size, content.size()));
        if (!target.isBlock)
            content.resize(content.size() / 2 * 2);
        for (const SCountedBytes& outer : counted) // the target is one of them
            if (outer.start <= target.start && outer.start + outer.size >= target.start + target.size)
                setSize(outer, outer.size + content.size() - target.size);
        bytes.erase(bytes.begin() + std::ptrdiff_t(target.start),
                    bytes.begin() + std::ptrdiff_t(target.start + target.size));
        bytes.insert(bytes.begin() + std::ptrdiff_t(target.start), content.begin(), content.end());
    }

    /// Where it is now: the bytes of a block's end move later.
    void setSize(const SCountedBytes& what, std::size_t size)
    {
        setWord(what.start - 4, std::uint32_t(size));
        if (what.isBlock)
            setWord(what.start + what.size, std::uint32_t(size));
    }

    std::vector<std::uint8_t> bytes;
    std::minstd_rand seed;
    std::vector<SCountedBytes> counted;
};

} // namespace NBrenmark

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t maxSize,
                                               unsigned int seed)
{
    NBrenmark::CLegacyMutation mutation(data, size, seed);
    const std::vector<std::uint8_t>& bytes = mutation.mutated(maxSize);
    std::memcpy(data, bytes.data(), bytes.size());
    return bytes.size();
}
