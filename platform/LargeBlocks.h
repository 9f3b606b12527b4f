// Memory in blocks of many megabytes whose pages are used again. Linux only.
#pragma once

#include <array>
#include <cstddef>
#include <mutex>

namespace platform {

/// Gives out blocks that are mappings of their own. The large pages of a block that is given back
/// are kept and moved into the next one, wherever it lies: a page that the system hands out anew
/// must be cleared first, which costs more than most of what is done with it. Since kept pages
/// always go first, no more memory is in use than if they had been given back to the system, but
/// for `kMostKeptBytes` beside small blocks that come from elsewhere.
///
/// May be called from several threads.
class LargeBlocks {
public:
    static constexpr std::size_t kPageBytes = std::size_t{2} << 20;
    static constexpr std::size_t kMostKeptBytes = std::size_t{64} << 20;

    constexpr LargeBlocks() = default;
    LargeBlocks(const LargeBlocks&) = delete;
    LargeBlocks& operator=(const LargeBlocks&) = delete;

    /// A block of `size` bytes at a multiple of kPageBytes; what it holds is anything. Null when
    /// the system has none, or when too many blocks are in use.
    void* take(std::size_t size);
    /// Takes a block back. False, and nothing done, for what is no block from here; that is cheap
    /// to find out.
    bool giveBack(void* block);
    std::size_t keptBytes();

private:
    struct Range {
        char* begin = nullptr;
        std::size_t bytes = 0;
    };
    template<std::size_t kCount>
    struct Ranges {
        std::array<Range, kCount> list{};
        std::size_t count = 0;
    };

    bool moveKeptInto(const Range& block);
    void keep(Range block);

    std::mutex m_mutex;
    Ranges<64> m_used;
    Ranges<32> m_kept; ///< whole large pages
    std::size_t m_keptBytes = 0;
};

} // namespace platform
