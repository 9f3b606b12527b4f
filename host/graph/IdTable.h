// A hash table of small numbers: open addressing, one block of memory. What the numbers stand for,
// and so whether one fits, the caller knows.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace host::graph {

inline constexpr std::uint32_t kNoId = 0xffffffff;

/// Spreads the bits of a number (the finalizer of SplitMix64).
constexpr std::uint64_t mixBits(std::uint64_t bits)
{
    bits = (bits ^ (bits >> 30)) * 0xbf58476d1ce4e5b9u;
    bits = (bits ^ (bits >> 27)) * 0x94d049bb133111ebu;
    return bits ^ (bits >> 31);
}

/// FNV-1a, spread: the same on every system.
constexpr std::uint64_t hashText(std::string_view text, std::uint64_t seed = 0)
{
    std::uint64_t hash = 0xcbf29ce484222325u ^ seed;
    for (const char letter : text) {
        hash = (hash ^ static_cast<unsigned char>(letter)) * 0x100000001b3u;
    }
    return mixBits(hash);
}

/// Entries with equal hashes are legal, but each costs the others a step: at most a few per hash.
class IdTable {
public:
    struct Entry {
        std::uint64_t hash = 0;
        std::uint32_t owner = 0;
        std::uint32_t id = kNoId;
    };

    /// The id of the first entry of a hash that `fits(owner, id)`, or kNoId.
    template<class Fits>
    std::uint32_t find(std::uint64_t hash, Fits fits) const
    {
        if (m_entries.empty()) {
            return kNoId;
        }
        for (std::size_t at = hash & mask(); m_entries[at].id != kNoId; at = (at + 1) & mask()) {
            if (m_entries[at].hash == hash && fits(m_entries[at].owner, m_entries[at].id)) {
                return m_entries[at].id;
            }
        }
        return kNoId;
    }

    void insert(std::uint64_t hash, std::uint32_t owner, std::uint32_t id);
    /// Takes the entry away if it is there.
    void erase(std::uint64_t hash, std::uint32_t owner, std::uint32_t id);
    std::size_t size() const { return m_count; }

private:
    std::size_t mask() const { return m_entries.size() - 1; }
    void place(std::uint64_t hash, std::uint32_t owner, std::uint32_t id);
    void grow();

    std::vector<Entry> m_entries; ///< a power of two, at most half of them taken
    std::size_t m_count = 0;
};

} // namespace host::graph
