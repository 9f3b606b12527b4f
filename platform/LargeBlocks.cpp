#ifdef __linux__

#include "platform/LargeBlocks.h"

#include <sys/mman.h>

#include <algorithm>
#include <cstdint>

namespace platform {
namespace {

constexpr std::size_t kSmallPageBytes = 4096; ///< a larger one, where there is, only wastes less

std::size_t roundedDown(std::size_t bytes, std::size_t unit)
{
    return bytes / unit * unit;
}

std::size_t roundedUp(std::size_t bytes, std::size_t unit)
{
    return roundedDown(bytes + unit - 1, unit);
}

/// How many bytes of a block lie in large pages: the rest is too small to be worth one.
std::size_t bytesInLargePages(std::size_t size)
{
    constexpr std::size_t kPage = LargeBlocks::kPageBytes;
    return roundedDown(size + kPage / 4, kPage);
}

/// A mapping of so many bytes that begins at a large page; null if there is none.
char* mapAligned(std::size_t bytes)
{
    constexpr std::size_t kPage = LargeBlocks::kPageBytes;
    void* const mapped =
        mmap(nullptr, bytes + kPage, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (mapped == MAP_FAILED) {
        return nullptr;
    }
    char* const first = static_cast<char*>(mapped);
    const auto address = reinterpret_cast<std::uintptr_t>(mapped);
    const std::size_t before = roundedUp(address, kPage) - address;
    if (before > 0) {
        munmap(first, before);
    }
    munmap(first + before + bytes, kPage - before);
    return first + before;
}

} // namespace

void* LargeBlocks::take(std::size_t size)
{
    const std::lock_guard lock(m_mutex);
    if (m_used.count == m_used.list.size() || size > SIZE_MAX / 2) {
        return nullptr;
    }
    const std::size_t large = bytesInLargePages(size);
    const Range block{nullptr, std::max(large, roundedUp(size, kSmallPageBytes))};
    char* const begin = mapAligned(block.bytes);
    if (begin == nullptr) {
        return nullptr;
    }
    madvise(begin, large, MADV_HUGEPAGE); // whether there are any is the system's affair
    if (!moveKeptInto({begin, large})) {
        munmap(begin, block.bytes);
        return nullptr;
    }
    m_used.list[m_used.count++] = {begin, block.bytes};
    return begin;
}

/// Page by page, since a range may consist of several mappings, which cannot be moved at once.
/// False if the block has a hole.
bool LargeBlocks::moveKeptInto(const Range& block)
{
    for (std::size_t filled = 0; filled < block.bytes && m_kept.count > 0; filled += kPageBytes) {
        Range& source = m_kept.list[m_kept.count - 1];
        char* const target = block.begin + filled;
        if (mremap(source.begin, kPageBytes, kPageBytes, MREMAP_MAYMOVE | MREMAP_FIXED, target) ==
            MAP_FAILED) { // it may have taken the target away before
            return mmap(target, kPageBytes, PROT_READ | PROT_WRITE,
                        MAP_PRIVATE | MAP_ANONYMOUS | MAP_FIXED, -1, 0) != MAP_FAILED;
        }
        source.begin += kPageBytes;
        source.bytes -= kPageBytes;
        m_keptBytes -= kPageBytes;
        m_kept.count -= source.bytes == 0 ? 1 : 0;
    }
    return true;
}

bool LargeBlocks::giveBack(void* block)
{
    if (reinterpret_cast<std::uintptr_t>(block) % kPageBytes != 0) {
        return false;
    }
    const std::lock_guard lock(m_mutex);
    Range* const end = m_used.list.data() + m_used.count;
    Range* const found = std::find_if(m_used.list.data(), end,
                                      [block](const Range& used) { return used.begin == block; });
    if (found == end) {
        return false;
    }
    const Range given = *found;
    *found = m_used.list[--m_used.count];
    keep(given);
    return true;
}

/// Keeps what of a block may be kept; the rest goes back to the system.
void LargeBlocks::keep(Range block)
{
    const std::size_t room = m_kept.count < m_kept.list.size() ? kMostKeptBytes - m_keptBytes : 0;
    const std::size_t kept = std::min(roundedDown(block.bytes, kPageBytes), room);
    if (kept > 0) {
        m_kept.list[m_kept.count++] = {block.begin, kept};
        m_keptBytes += kept;
    }
    if (kept < block.bytes) {
        munmap(block.begin + kept, block.bytes - kept);
    }
}

std::size_t LargeBlocks::keptBytes()
{
    const std::lock_guard lock(m_mutex);
    return m_keptBytes;
}

} // namespace platform

#endif
