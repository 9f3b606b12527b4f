#include "platform/largeArrays.h"

#include <cstddef> // says whose C library this is

// Sanitizers bring an operator new of their own.
#if defined(__GLIBC__) && !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
#define PLATFORM_HAS_LARGE_PAGES 1
#if defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#undef PLATFORM_HAS_LARGE_PAGES
#endif
#endif
#endif

#ifdef PLATFORM_HAS_LARGE_PAGES

#include <malloc.h>
#include <sys/mman.h>

#include <cstdint>
#include <cstdlib>
#include <new>

namespace {

constexpr int kLargeBytes = 4 << 20;    ///< from here on an allocation is a mapping of its own
constexpr int kReserveBytes = 32 << 20; ///< of smaller ones that were given back: kept for the next
constexpr std::uintptr_t kPageBytes = 4096;

bool isExpecting = false;

/// Asks for large pages within a block. Whether there are any is the system's affair.
void adviseLargePages(void* block, std::size_t size)
{
    const auto begin = reinterpret_cast<std::uintptr_t>(block);
    const std::uintptr_t first = (begin + kPageBytes - 1) & ~(kPageBytes - 1);
    const std::uintptr_t end = (begin + size) & ~(kPageBytes - 1);
    madvise(reinterpret_cast<void*>(first), end - first, MADV_HUGEPAGE);
}

} // namespace

namespace platform {

void expectLargeArrays()
{
    // Fixed bounds: by themselves they grow with every block that is given back, and keep those.
    isExpecting = isExpecting || (mallopt(M_MMAP_THRESHOLD, kLargeBytes) == 1 &&
                                  mallopt(M_TRIM_THRESHOLD, kReserveBytes) == 1);
}

} // namespace platform

void* operator new(std::size_t size)
{
    for (;;) {
        void* const block = std::malloc(size == 0 ? 1 : size);
        if (block != nullptr) {
            if (size >= std::size_t{kLargeBytes} && isExpecting) {
                adviseLargePages(block, size);
            }
            return block;
        }
        const std::new_handler handler = std::get_new_handler();
        if (handler == nullptr) {
            throw std::bad_alloc();
        }
        handler();
    }
}

void operator delete(void* block) noexcept
{
    std::free(block);
}

void operator delete(void* block, std::size_t) noexcept
{
    std::free(block);
}

#else

namespace platform {

void expectLargeArrays() {}

} // namespace platform

#endif
